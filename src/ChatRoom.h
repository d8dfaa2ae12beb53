#pragma once

#include "account/NickForms.h"
#include "channel/ChannelLists.h"
#include "channel/ChannelTable.h"
#include "channel/ModeLine.h"
#include "channel/TopicField.h"
#include "desktop/Channel.h"
#include "input/ChatOptions.h"
#include "input/CommandProcessor.h"
#include "input/Identifiers.h"
#include "input/InputLine.h"
#include "input/NickActions.h"
#include "input/OwnTextStyle.h"
#include "input/Presence.h"
#include "platform/TcpWinsock.h"
#include "query/QueryTable.h"
#include "render/IncomingText.h"
#include "render/StatusLine.h"
#include "render/TextWriter.h"
#include "session/Connection.h"
#include "session/Ctcp.h"
#include "session/IdentResponder.h"
#include "session/Interpreter.h"
#include "session/NickEvents.h"

#include <QApplication>

class Handlers;
class Settings;
struct Surroundings;

// The main window with all that lives as long as it: the session, the room, the input. Made at
// the first touch of the main window.
class ChatRoom final : public QObject, private NickFormHost
{
    Q_OBJECT
public:
    struct Parts
    {
        const Surroundings& surroundings;
        const Handlers& handlers;
        const Settings& settings;
        SessionVariables& variables;
        SignInForm& login;
        ContactList& buddies;
        WebPages& pages;
        Popup& popup;
        TrafficLog& debugWin;
        Program& program;
        PrivateWindowFactory& privateWindows;
        std::function<ListBox&()> ignoreRows;
    };

    explicit ChatRoom(const Parts& parts);

    // Reads the session's settings; raises what they raise.
    void Form_Load();

    // The colour of the user's own text, by its code. An unknown one raises TypeMismatch (13).
    void selectcolor(const QString& code);

private:
    void wireWindow();
    void wireEntries();
    void setChannelEnabled(bool enabled) override { window.setEnabled(enabled); }
    void FlashWindow(QWidget& form) override { QApplication::alert(&form); }

    Parts m_parts;

public:
    Channel window;
    TcpWinsock sock;
    TcpWinsock IDENT;
    Room room;
    ChannelTable channels;
    TextWriter writer;
    StatusLine status;
    OwnTextStyle ownStyle;
    QueryTable queries;
    Connection connection;
    Identifiers identifiers;
    CommandProcessor commands;
    IncomingText roomText;
    ModeLine modeLine;
    NickEvents nickEvents;
    Ctcp ctcp;
    IdentResponder identResponder;
    NickForms nickForms;
    ChannelLists channelLists;
    Interpreter interpreter;
    TopicField topicField;
    InputLine inputLine;
    NickActions nickActions;
    Presence presence;
    ChatOptions options;
};
