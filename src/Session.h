#pragma once

#include "commands/CommandProcessor.h"
#include "commands/Identifiers.h"
#include "room/ModeLine.h"
#include "session/Connection.h"
#include "session/Ctcp.h"
#include "session/IdentResponder.h"
#include "session/Interpreter.h"
#include "session/NickEvents.h"
#include "text/IncomingText.h"
#include "wire/TcpWinsock.h"

struct ChatRoomParts;
struct MainRoom;
struct SmallWindows;

// The connection with all that makes sense of its lines.
struct Session
{
    Session(const ChatRoomParts& given, MainRoom& main, SmallWindows& windows, WebPages& pages);

    TcpWinsock sock;
    TcpWinsock IDENT;
    Connection connection;
    Identifiers identifiers;
    CommandProcessor commands;
    IncomingText roomText;
    ModeLine modeLine;
    NickEvents nickEvents;
    Ctcp ctcp;
    IdentResponder identResponder;
    Interpreter interpreter;
};
