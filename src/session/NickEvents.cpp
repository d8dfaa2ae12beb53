#include "session/NickEvents.h"

#include "common/ControlCharacters.h"
#include "room/ChannelTable.h"
#include "talk/QueryTable.h"
#include "text/TextWriter.h"

#include <utility>

using namespace Qt::StringLiterals;

void NickEvents::NickChanged(const QString& oldNick, const QString& newNick) const
{
    bool queryRenamed = false;
    for (int i = 1; i <= m_channels.ChannelCount(); ++i) {
        Room& room = m_channels.Channels(i);
        if (!room.nicks.InChannel(oldNick))
            continue;
        if (!std::exchange(queryRenamed, true))
            renameQuery(oldNick, newNick);
        if (!room.ChannelName.isEmpty() && room.nicks.ChangeNck(oldNick, newNick))
            m_writer.WriteView(room.form.DataIn(), strColor % "03"_L1 % strBold % oldNick %
                                                       strBold % " is now known as "_L1 % strBold %
                                                       newNick);
    }
}

void NickEvents::renameQuery(const QString& oldNick, const QString& newNick) const
{
    if (PrivateWindow* window = m_queries.windowOf(oldNick))
        window->setPeer(newNick);
}

void NickEvents::NickQuit(const QString& nick, const QString& reason) const
{
    const QString line =
        strColor % "02"_L1 % strBold % nick % strBold % " has Quit IRC ( "_L1 % reason % " )"_L1;
    for (int i = 1; i <= m_channels.ChannelCount(); ++i) {
        Room& room = m_channels.Channels(i);
        if (!room.nicks.InChannel(nick) || room.ChannelName.isEmpty())
            continue;
        room.nicks.RemoveNick(nick);
        m_writer.WriteView(room.form.DataIn(), line);
        break;
    }
    if (PrivateWindow* window = m_queries.windowOf(nick))
        m_writer.WriteView(window->DataIn(), line);
}
