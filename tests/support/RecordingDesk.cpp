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
        result.append(bar < 0 ? coded(entry) : written(entry.left(bar), entry.mid(bar + 2)));
    }
    return result;
}

QStringList RecordingDesk::expected(const char* lines)
{
    const QString text = QString::fromUtf8(lines);
    return expected(text.isEmpty() ? QStringList() : text.split(u'\n'));
}
