#pragma once

#include "commands/CommandProcessor.h"
#include "commands/Identifiers.h"
#include "commands/InputLine.h"
#include "common/SessionVariables.h"
#include "platform/Handlers.h"
#include "room/ChannelTable.h"
#include "room/ModeLine.h"
#include "room/TopicField.h"
#include "session/Connection.h"
#include "session/Ctcp.h"
#include "session/IdentResponder.h"
#include "session/Interpreter.h"
#include "session/NickEvents.h"
#include "support/RecordingPorts.h"
#include "support/Script.h"
#include "talk/QueryTable.h"
#include "text/IncomingText.h"
#include "text/MainView.h"
#include "text/OwnTextStyle.h"
#include "text/StatusLine.h"
#include "text/TextWriter.h"

#include <QtTest>

// The whole logic of one program on stand-ins: feed it a server line or a click and look at the
// journal. With a socket and an event loop of its own it can stand on real ones.
class RecordingDesk final
{
public:
    explicit RecordingDesk(Winsock* realSock = nullptr, EventLoop* realEvents = nullptr);

    // Connected and registered as "me"; the journal is empty afterwards.
    void register_();
    // The same, and in #room with these others.
    void enterRoom(const QString& names = QStringLiteral("@me bob"));
    // A server line arrives, with its line end.
    void hear(const QString& line) { sock.arrive(line + QLatin1StringView("\r\n")); }
    QStringList take() { return journal.take(); }
    // A row of the room's list.
    void select(const QString& row)
    {
        channel.nicks.setListIndex(static_cast<int>(channel.nicks.rows().indexOf(row)));
    }

    // Plays a script and says where it went another way, or nothing. A line of it is
    //   "< PING x"     a line of the server,
    //   "! error x"    something that happens, one of `acts`,
    //   "? modes=+n"   a look at something, one of `looks`, with what is there,
    //   or an entry of the journal; a step with "~" before it leaves none. "! onPause STEP" keeps
    //   a step for the next pause, where a look is an entry: "- modes=+n".
    QString play(const QString& script);
    std::map<QString, std::function<void(const QString& argument)>> acts;
    std::map<QString, std::function<QString()>> looks; // what is put together says "-> QString"

    // What the journal holds after a line with this markup was written: {A} {B} {C} {U} {O} stand
    // for the control characters, {N} and {0} for a line feed and code 0.
    static QString written(const QString& view, const QString& markup);
    static QString coded(QString markup);
    static QString padded(const QString& text); // as the settings give it
    // Entries that begin with a view's name and "| " are markup; all others stay.
    static QStringList expected(const QStringList& entries);
    static QStringList expected(const QString& lines); // an entry a line
    static QStringList expected(const char* lines) { return expected(QString::fromUtf8(lines)); }

    Journal journal;
    RecordingWinsock sock{QStringLiteral("sock"), journal};
    RecordingWinsock ident{QStringLiteral("ident"), journal};
    RecordingEvents events{journal};
    RecordingLogin login{journal};
    RecordingChannel channel{journal};
    RecordingForms forms{journal};
    RecordingBuddies buddies{journal};
    RecordingLists lists{journal};
    ScriptedDialogs dialogs{&journal};
    RecordingQueries windows{journal};
    MemoryListBox ignored{QStringLiteral("List1"), MemoryListBox::Order::AsAdded, journal};
    RecordingEntry mnu_pm_no{QStringLiteral("mnu_pm_no"), {}, true, journal};
    RecordingEntry mnu_pm_yes{QStringLiteral("mnu_pm_yes"), {}, true, journal};
    RecordingEntry mnu_blocked{QStringLiteral("mnu_blocked"), {}, true, journal};
    MemoryInputBox box;
    StoppedClock clock;
    double random = 0;
    SessionReport lastReport;

    SessionVariables variables;
    Handlers handlers{
        [this](const QString& message) { journal(QLatin1StringView("FATAL ") + message); }};
    TextWriter writer{variables};
    MainView mainView{writer, channel.DataIn()};
    Room room{channel};
    ChannelTable channels{room};
    QueryTable queries{
        windows, {mnu_pm_no, mnu_pm_yes, mnu_blocked}, [this]() -> ListBox& { return ignored; }};
    Connection connection;
    IdentResponder identResponder;
    StatusLine status{mainView};
    ModeLine modeLine{variables, channels};
    NickEvents nickEvents{channels, queries, writer};
    IncomingText roomText{IncomingText::room, writer, connection};
    Ctcp ctcp{{mainView, roomText, connection, queries}};
    Identifiers identifiers{{variables, channels, connection, clock, [this] { return random; }}};
    CommandProcessor commands;
    TopicField topic{room, connection};
    OwnTextStyle style;
    InputLine inputLine{{variables, style, room, box, connection, writer, dialogs}};
    Interpreter interpreter;

private:
    static bool isStep(const QString& line);
    // What a look has seen, else nothing.
    QString perform(const QString& line);
    void meanwhile(const QString& step);
};
