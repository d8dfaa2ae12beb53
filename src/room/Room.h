#pragma once

#include "room/ChannelModes.h"
#include "room/NickList.h"
#include "room/RoomForm.h"

// A chat room: its name, its people, its modes, and the window that shows it. The name is empty
// until the room has been entered and survives every disconnect.
struct Room
{
    explicit Room(RoomForm& window)
        : form(window)
        , nicks(window)
    {
    }

    RoomForm& form;
    NickList nicks;
    ChannelModes modes;
    QString ChannelName;
    QString Tag; // a marker that nothing reads back
};
