#include "Session.h"

#include "MainRoom.h"
#include "SmallWindows.h"
#include "Surroundings.h"

Session::Session(const ChatRoomParts& given, MainRoom& main, SmallWindows& windows, WebPages& pages)
    : connection(
          {
              .variables = given.variables,
              .login = given.login,
              .channel = main.window,
              .buddies = windows.buddies,
              .pages = pages,
              .popup = given.popup,
              .debugWin = given.debugWin,
              .program = given.program,
              .dialogs = given.dialogs,
              .events = given.surroundings.events,
              .mainView = main.mainView,
              .channels = main.channels,
              .queries = windows.queries,
              .sock = sock,
              .ident = IDENT,
          },
          given.handlers)
    , identifiers({given.variables, main.channels, connection, given.surroundings.clock,
                   given.surroundings.random})
    , commands({given.variables, identifiers, connection, main.channels, windows.queries,
                windows.buddies, main.status, main.writer, given.surroundings.events})
    , roomText(
          IncomingText::room, main.writer, connection,
          [&mentions = main.mentions](RichTextBox& view, const QString& nick, const QString& text) {
              mentions.roomLine(view, nick, text);
          })
    , modeLine(given.variables, main.channels)
    , nickEvents(main.channels, windows.queries, main.writer)
    , ctcp({main.mainView, roomText, connection, windows.queries})
    , identResponder({given.variables, main.mainView, given.surroundings.events, IDENT},
                     given.handlers)
    , interpreter({
          .variables = given.variables,
          .login = given.login,
          .channel = main.window,
          .prompts = windows.nickForms,
          .buddies = windows.buddies,
          .channelInfo = windows.channelLists,
          .dialogs = given.dialogs,
          .events = given.surroundings.events,
          .connection = connection,
          .channels = main.channels,
          .queries = windows.queries,
          .mainView = main.mainView,
          .writer = main.writer,
          .status = main.status,
          .modeLine = modeLine,
          .nickEvents = nickEvents,
          .roomText = roomText,
          .ctcp = ctcp,
          .commands = commands,
      })
{
    sock.setLocalAddress(given.surroundings.localAddress);
    IDENT.setLocalAddress(given.surroundings.localAddress);
    IDENT.LocalPort = given.surroundings.identPort;
    IDENT.RemotePort = given.surroundings.identPort;
    connection.setKeeper([&main](const QString& text) { main.inputLine.remember(text); });
    connection.setInterpreter([this](const QString& line) { interpreter.interpret(line); });
}
