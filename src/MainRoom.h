#pragma once

#include "commands/ChatOptions.h"
#include "commands/InputLine.h"
#include "commands/NickActions.h"
#include "commands/Presence.h"
#include "desktop/Channel.h"
#include "desktop/Sounds.h"
#include "room/ChannelTable.h"
#include "room/TopicField.h"
#include "text/MainView.h"
#include "text/Mentions.h"
#include "text/OwnTextStyle.h"
#include "text/StatusLine.h"
#include "text/TextWriter.h"

#include <memory>

class ViewLook;
struct ChatRoomParts;
struct Session;
struct SmallWindows;

// The main window, the room in it, and what the user does there.
struct MainRoom
{
    // Windows and session need not stand yet: here they are only remembered.
    MainRoom(const ChatRoomParts& given, SmallWindows& windows, Session& session);

    std::shared_ptr<ViewLook> look; // of all conversations
    Channel window;
    Room room;
    ChannelTable channels;
    TextWriter writer;
    MainView mainView;
    StatusLine status;
    OwnTextStyle ownStyle;
    Sounds sounds;
    Mentions mentions;
    TopicField topicField;
    InputLine inputLine;
    NickActions nickActions;
    Presence presence;
    ChatOptions options;
};
