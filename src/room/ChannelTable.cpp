#include "room/ChannelTable.h"

#include "common/TextHelpers.h"

int ChannelTable::AddChannel(const QString& name)
{
    const int index = ++m_channelCount;
    m_channels(index) = &m_room;
    m_room.ChannelName = name;
    m_room.form.setVisible(true);
    m_room.Tag = QString::number(index);
    return index;
}

int ChannelTable::FindChannel(const QString& name) const
{
    const QString wanted = withoutCarriageReturns(name);
    for (int index = 1; index <= m_channelCount; ++index) {
        const QString& known = Channels(index).ChannelName;
        if (known == wanted || known.toLower() == wanted.toLower())
            return index;
    }
    return -1;
}

Room* ChannelTable::entered(const QString& name) const
{
    const int index = FindChannel(name);
    return index == -1 ? nullptr : &Channels(index);
}

Room& ChannelTable::Channels(int index) const
{
    Room* room = m_channels(index);
    if (!room)
        throw RunTimeError(RunTimeError::Number::ObjectVariableNotSet);
    return *room;
}
