#pragma once

#include "common/BoundedArray.h"
#include "common/Int16.h"
#include "room/Room.h"

// The rooms that have been entered. There is one room per run: entering a second time counts up
// and then raises SubscriptOutOfRange (9), and so does every search that gets past the first room
// from then on.
class ChannelTable final
{
public:
    explicit ChannelTable(Room& room)
        : m_room(room)
    {
    }

    int AddChannel(const QString& name);
    // The place of a room, case and carriage returns ignored, or -1.
    int FindChannel(const QString& name) const;

    int ChannelCount() const { return m_channelCount; }
    Room& Channels(int index) const;
    // The room of that name, none if it has not been entered.
    Room* entered(const QString& name) const;
    // The one room, entered or not.
    Room& main() const { return m_room; }

private:
    Room& m_room;
    BoundedArray<Room*, 0, 1> m_channels;
    Int16 m_channelCount;
};
