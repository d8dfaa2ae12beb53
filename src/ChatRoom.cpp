#include "ChatRoom.h"

#include "Surroundings.h"
#include "common/ControlCharacters.h"
#include "platform/ActionEntry.h"
#include "platform/Handlers.h"
#include "render/ColorTables.h"
#include "session/SessionStart.h"

using namespace Qt::StringLiterals;

ChatRoom::ChatRoom(const Parts& parts)
    : m_parts(parts)
    , window(parts.handlers, parts.surroundings.dialogs)
    , room(window)
    , channels(room)
    , writer(parts.variables)
    , status(writer, window.DataIn())
    , queries(parts.privateWindows,
              {window.entry("mnu_pm_no"_L1), window.entry("mnu_pm_yes"_L1),
               window.entry("mnu_blocked"_L1)},
              parts.ignoreRows)
    , connection(
          {
              .variables = parts.variables,
              .login = parts.login,
              .channel = window,
              .buddies = parts.buddies,
              .pages = parts.pages,
              .popup = parts.popup,
              .debugWin = parts.debugWin,
              .program = parts.program,
              .dialogs = parts.surroundings.dialogs,
              .events = parts.surroundings.events,
              .writer = writer,
              .channels = channels,
              .queries = queries,
              .sock = sock,
              .ident = IDENT,
          },
          parts.handlers)
    , identifiers({parts.variables, channels, connection, parts.surroundings.clock,
                   parts.surroundings.random})
    , commands({parts.variables, identifiers, connection, channels, queries, parts.buddies, status,
                writer, parts.surroundings.events})
    , roomText(IncomingText::room, writer, connection)
    , modeLine(parts.variables, channels)
    , nickEvents(channels, queries, writer)
    , ctcp({writer, roomText, connection, channels, queries})
    , identResponder({parts.variables, writer, window.DataIn(), parts.surroundings.events, IDENT},
                     parts.handlers)
    , interpreter({
          .variables = parts.variables,
          .login = parts.login,
          .channel = window,
          .prompts = parts.prompts,
          .buddies = parts.buddies,
          .channelInfo = parts.channelInfo,
          .dialogs = parts.surroundings.dialogs,
          .events = parts.surroundings.events,
          .connection = connection,
          .channels = channels,
          .queries = queries,
          .writer = writer,
          .status = status,
          .modeLine = modeLine,
          .nickEvents = nickEvents,
          .roomText = roomText,
          .ctcp = ctcp,
          .commands = commands,
      })
    , topicField(room, connection)
    , inputLine(
          {parts.variables, ownStyle, room, window, connection, writer, parts.surroundings.dialogs})
{
    sock.setLocalAddress(parts.surroundings.localAddress);
    IDENT.setLocalAddress(parts.surroundings.localAddress);
    IDENT.LocalPort = parts.surroundings.identPort;
    IDENT.RemotePort = parts.surroundings.identPort;
    connection.setInterpreter([this](const QString& line) { interpreter.interpret(line); });
    wire();
}

void ChatRoom::Form_Load()
{
    startSession(window, m_parts.login, m_parts.settings, m_parts.surroundings.events,
                 m_parts.variables, ownStyle);
}

void ChatRoom::wire()
{
    window.setKeyHooks({
        .topicKeyDown = [this](int keyCode) { return topicField.KeyDown(keyCode); },
        .topicKeyPress = [this](int character) { return topicField.KeyPress(character); },
        .inputKeyDown = [this](int keyCode) { return inputLine.KeyDown(keyCode); },
        .inputKeyPress = [this](int character) { return inputLine.KeyPress(character); },
    });
    connect(&window, &Channel::Check3_Click, this,
            [this](bool bold) { ownStyle.BoldPrefix = bold ? QString(strBold) : QString(); });
    connect(&window, &Channel::Check4_Click, this, [this](bool underline) {
        ownStyle.UnderlinePrefix = underline ? QString(strUnderline) : QString();
    });
    connect(&window, &Channel::closedToTray, this, [this] { m_parts.login.Show(); });

    struct EntryRow
    {
        QLatin1StringView name;
        void (Connection::*click)();
    };
    static constexpr EntryRow entries[]{
        {"mnu_File_Connect"_L1, &Connection::mnu_File_Connect_Click},
        {"mnu_File_Disconnect"_L1, &Connection::mnu_File_Disconnect_Click},
        {"mnu_Terminate"_L1, &Connection::mnu_terminate_Click},
        {"mnu_systray_exit"_L1, &Connection::mnu_terminate_Click},
    };
    for (const EntryRow& row : entries)
        m_parts.handlers.connect(&window.entry(row.name), &QAction::triggered, this,
                                 [this, click = row.click] { (connection.*click)(); });
}

void ChatRoom::selectcolor(const QString& code)
{
    ownStyle.TextColor = code;
    const std::optional<QRgb> value = inputColorOf(code);
    if (!value)
        throw RunTimeError(RunTimeError::Number::TypeMismatch);
    window.setInputColor(QColor::fromRgb(*value));
}
