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

} // namespace

RecordingDesk::RecordingDesk(Winsock* realSock, EventLoop* realEvents)
    : variables(sessionVariables())
    , connection({variables, login, channel, buddies, forms, popup, forms, forms, dialogs,
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
    acts = {
        {u"connect"_s, [this](const QString&) { connection.mnu_File_Connect_Click(); }},
        {u"disconnect"_s, [this](const QString&) { connection.mnu_File_Disconnect_Click(); }},
        {u"terminate"_s, [this](const QString&) { connection.mnu_terminate_Click(); }},
        {u"connected"_s, [this](const QString&) { sock.beConnected(); }},
        {u"closed"_s, [this](const QString&) { Q_EMIT sock.CloseEvent(); }},
        {u"error"_s, [this](const QString& why) { Q_EMIT sock.ErrorEvent(1, why); }},
        {u"open"_s, [this](const QString& nick) { queries.OpenQuery(nick, {}); }},
        {u"unload"_s, [this](const QString& n) { queries.Queries(n.toInt()).Unload(); }},
        {u"block"_s, [this](const QString& row) { ignored.AddItem(row); }},
        {u"select"_s, [this](const QString& row) { select(row); }},
        {u"answer"_s, [this](const QString& text) { dialogs.answerText = text; }},
        {u"state"_s, [this](const QString& n) { sock.setState(Winsock::State(n.toInt())); }},
    };
    looks = {
        {u"modes"_s, [this] { return room.modes.ModeText(); }},
        {u"rows"_s, [this] { return channel.nicks.rows().join(u' '); }},
        {u"chatters"_s, [this] { return QString::number(room.nicks.ChatterCount()); }},
        {u"records"_s, [this] { return QString::number(room.nicks.NickCount()); }},
        {u"windows"_s, [this] { return QString::number(queries.QueryCount()); }},
        {u"blocked"_s, [this] { return ignored.rows().join(u','); }},
        {u"nick"_s, [this] { return variables.MyNick; }},
        {u"port"_s, [this] { return channel.Text1; }},
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

QString RecordingDesk::coded(QString markup)
{
    constexpr std::pair<QLatin1StringView, QChar> names[]{
        {"{A}"_L1, strAction},    {"{B}"_L1, strBold},    {"{C}"_L1, strColor},
        {"{U}"_L1, strUnderline}, {"{R}"_L1, strReverse}, {"{O}"_L1, secondBold},
        {"{0}"_L1, QChar(u'\0')},
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
        if (QString(u"<!~"_s).contains(entry.left(1)) && !entry.startsWith("<<"_L1))
            result.append(entry); // a step of a script
        else
            result.append(bar < 0 ? coded(entry) : written(entry.left(bar), entry.mid(bar + 2)));
    }
    return result;
}

QStringList RecordingDesk::expected(const QString& lines)
{
    return expected(lines.isEmpty() ? QStringList() : lines.split(u'\n'));
}

QStringList RecordingDesk::play(const QString& script)
{
    QStringList went;
    for (const QString& line : script.split(u'\n')) {
        const bool isQuiet = line.startsWith(u'~');
        const QString step = coded(isQuiet ? line.mid(1) : line);
        const QString what = step.mid(2);
        if (step.startsWith("< "_L1)) {
            went += line;
            hear(what);
        } else if (step.startsWith("! "_L1)) {
            went += line;
            handlers.run([&] { acts.at(what.section(u' ', 0, 0))(what.section(u' ', 1)); });
        } else if (step.startsWith("? "_L1)) {
            const QString name = what.section(u'=', 0, 0);
            went += "? "_L1 + name + u'=' + looks.at(name)();
        } else {
            continue; // what is expected
        }
        const QStringList done = take();
        if (!isQuiet && !done.isEmpty())
            went += done.join(u'\n').split(u'\n');
    }
    return went;
}
