#include "support/RecordingDesk.h"

#include "common/ControlCharacters.h"

using namespace Qt::StringLiterals;

namespace {

SessionVariables sessionVariables()
{
    SessionVariables variables;
    variables.ServerHost = u"irc.example"_s;
    variables.MyNick = u"loaded"_s;
    variables.FullName = u"A B"_s;
    variables.IdentName = u"QHM"_s;
    variables.AutoJoin = u"#room"_s;
    variables.QuitMsg = u"gone"_s;
    variables.Reconnect = true;
    variables.MaxTextHistory = 30;
    variables.FontName = u"Arial"_s;
    variables.FontSize = 10;
    return variables;
}

// What has happened, by whom, why, and whether there will be another attempt.
QString told(const SessionReport& report)
{
    static const QStringList events =
        u"SignedOut Connecting Cancelled Failed Connected NickRefused Welcome RoomRefused Kicked "
        "Killed ServerClosed"_s.split(u' ');
    return QStringList{events[static_cast<int>(report.event)], report.who, report.reason,
                       report.nextTry.isForever() ? QString() : u"again"_s}
        .join(u'|');
}

} // namespace

RecordingDesk::RecordingDesk(Winsock* realSock, EventLoop* realEvents)
    : variables(sessionVariables())
    , connection({variables, login, channel, buddies, forms, forms, forms, forms, dialogs,
                  realEvents ? *realEvents : events, mainView, channels, queries,
                  realSock ? *realSock : sock, ident},
                 handlers)
    , identResponder({variables, mainView, events, ident}, handlers)
    , commands({variables, identifiers, connection, channels, queries, buddies, status, writer,
                realEvents ? *realEvents : events})
    , interpreter({variables, login, channel, forms, buddies, lists, dialogs,
                   realEvents ? *realEvents : events, connection, channels, queries, mainView,
                   writer, status, modeLine, nickEvents, roomText, ctcp, commands})
{
    ident.LocalPort = ident.RemotePort = 113;
    connection.setInterpreter([this](const QString& line) { interpreter.interpret(line); });
    QObject::connect(&connection, &Connection::reported,
                     [this](const SessionReport& report) { lastReport = report; });
    acts = {
        {u"register"_s, [this](auto) { register_(); }},
        {u"enter"_s, [this](auto names) { enterRoom(names); }},
        {u"onPause"_s, [this](auto step) { events.onPause << [=, this] { meanwhile(step); }; }},
        {u"whileOpen"_s, [this](auto step) { dialogs.whileOpen = [=, this] { meanwhile(step); }; }},
        {u"onYield"_s, [this](auto step) { events.onYield << [=, this] { meanwhile(step); }; }},
        {u"arrive"_s, [this](auto chunk) { sock.arrive(chunk); }},
        {u"connect"_s, [this](auto) { connection.mnu_File_Connect_Click(); }},
        {u"disconnect"_s, [this](auto) { connection.mnu_File_Disconnect_Click(); }},
        {u"terminate"_s, [this](auto) { connection.mnu_terminate_Click(); }},
        {u"connected"_s, [this](auto) { sock.beConnected(); }},
        {u"closed"_s, [this](auto) { Q_EMIT sock.CloseEvent(); }},
        {u"error"_s, [this](auto why) { Q_EMIT sock.ErrorEvent(1, why); }},
        {u"open"_s, [this](auto nick) { queries.OpenQuery(nick, {}); }},
        {u"unload"_s, [this](auto n) { queries.Queries(n.toInt()).Unload(); }},
        {u"block"_s, [this](auto row) { ignored.AddItem(row); }},
        {u"refuse"_s, [this](auto) { mnu_pm_yes.setChecked(true); }},
        {u"named"_s, [this](auto nick) { variables.MyNick = padded(nick); }},
        {u"password"_s, [this](auto text) { login.Text3 = text; }},
        {u"port"_s, [this](auto port) { channel.Text1 = port; }},
        {u"select"_s, [this](auto row) { select(row); }},
        {u"answer"_s, [this](auto text) { dialogs.answerText = text; }},
        {u"state"_s, [this](auto n) { sock.setState(Winsock::State(n.toInt())); }},
    };
    looks = {
        {u"modes"_s, [this] { return room.modes.ModeText(); }},
        {u"rows"_s, [this] { return channel.nicks.rows().join(u' '); }},
        {u"chatters"_s, [this] { return QString::number(room.nicks.ChatterCount()); }},
        {u"records"_s, [this] { return QString::number(room.nicks.NickCount()); }},
        {u"rooms"_s, [this] { return QString::number(channels.ChannelCount()); }},
        {u"room"_s, [this]() -> QString { return room.ChannelName + u' ' + room.Tag; }},
        {u"topic"_s, [this] { return channel.topic.view.runs().chopped(2); }},
        {u"windows"_s, [this] { return QString::number(queries.QueryCount()); }},
        {u"blocked"_s, [this] { return ignored.rows().join(u','); }},
        {u"nick"_s, [this] { return variables.MyNick; }},
        {u"port"_s, [this] { return channel.Text1; }},
        {u"report"_s, [this] { return told(lastReport); }},
        {u"retrying"_s, [this] { return QString::number(connection.isWaitingToRetry()); }},
    };
}

void RecordingDesk::register_()
{
    connection.mnu_File_Connect_Click();
    sock.beConnected();
    hear(u":server 001 me :Welcome"_s);
    take();
}

void RecordingDesk::enterRoom(const QString& names)
{
    register_();
    hear(u":me!i@h JOIN :#room"_s);
    hear(":server 353 me = #room :"_L1 + names);
    take();
}

QString RecordingDesk::padded(const QString& text)
{
    return text.leftJustified(255, QChar(u'\0'));
}

QString RecordingDesk::coded(QString markup)
{
    constexpr std::pair<QLatin1StringView, QChar> names[]{
        {"{A}"_L1, strAction},    {"{B}"_L1, strBold},    {"{C}"_L1, strColor},
        {"{U}"_L1, strUnderline}, {"{R}"_L1, strReverse}, {"{O}"_L1, secondBold},
        {"{0}"_L1, QChar(u'\0')}, {"{N}"_L1, u'\n'},
    };
    for (const auto& [name, character] : names)
        markup.replace(name, character);
    return markup;
}

QString RecordingDesk::written(const QString& view, const QString& markup)
{
    MemoryView scratch;
    const SessionVariables variables = sessionVariables();
    TextWriter(variables).WriteView(scratch, coded(markup));
    QString runs = scratch.runs();
    if (runs.endsWith("\r\n"_L1))
        runs.chop(2);
    return view + "| "_L1 + runs;
}

QStringList RecordingDesk::expected(const QStringList& entries)
{
    QStringList result;
    for (const QString& entry : entries) {
        const qsizetype bar = entry.indexOf("| "_L1);
        if (isStep(entry))
            result.append(entry.startsWith(u'?') ? coded(entry) : entry);
        else
            result.append(bar < 0 ? coded(entry) : written(entry.left(bar), entry.mid(bar + 2)));
    }
    return result;
}

QStringList RecordingDesk::expected(const QString& lines)
{
    return expected(lines.isEmpty() ? QStringList() : lines.split(u'\n'));
}

void RecordingDesk::meanwhile(const QString& step)
{
    if (const QString seen = perform(step); !seen.isEmpty())
        journal("- ", seen);
}

bool RecordingDesk::isStep(const QString& line)
{
    return u"<!?~"_s.contains(line.left(1)) && !line.isEmpty() && !line.startsWith("<<"_L1);
}

QString RecordingDesk::perform(const QString& line)
{
    const QString step = coded(line.startsWith(u'~') ? line.mid(1) : line);
    const QString what = step.mid(2);
    if (step.startsWith(u'<'))
        hear(what);
    else if (step.startsWith(u'!'))
        handlers.run([&] { acts.at(what.section(u' ', 0, 0))(what.section(u' ', 1)); });
    else
        return what.section(u'=', 0, 0) + u'=' + looks.at(what.section(u'=', 0, 0))();
    return {};
}

QString RecordingDesk::play(const QString& script)
{
    QStringList went;
    for (const QString& line : script.split(u'\n')) {
        if (!isStep(line))
            continue; // what is expected
        const bool isQuiet = line.startsWith(u'~');
        const QString seen = perform(line);
        went += seen.isEmpty() ? line : "? "_L1 + seen;
        const QStringList done = take();
        if (!isQuiet)
            went += done;
    }
    return difference(went, expected(script).join(u'\n'));
}
