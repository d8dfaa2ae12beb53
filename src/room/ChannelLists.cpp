#include "room/ChannelLists.h"

#include "common/SessionVariables.h"
#include "platform/PlainText.h"
#include "room/Room.h"
#include "wire/LineSink.h"

using namespace Qt::StringLiterals;

ChannelLists::ChannelLists(const ChannelInfo::Parts& parts, const Room& room)
    : m_parts(parts)
    , m_room(room)
    , m_form([this] { return std::make_unique<ChannelInfo>(m_parts); })
{
}

void ChannelLists::mnu_chan_ban_Click()
{
    // The rows of an open form stay: the same list comes again below them.
    m_form->Show();
    m_form->ChannelName = m_room.ChannelName;
    m_parts.variables.ListFetching = true;
    setPlainTitle(m_form(), "Channel Ban List For "_L1 + m_room.ChannelName);
    m_parts.server.SendData("MODE "_L1 % m_room.ChannelName % " b"_L1);
}

void ChannelLists::AddBEI(const QString& mask, const QString& setter, const QString& time)
{
    m_form->AddBEI(mask, setter, time);
}
