#include "account/SessionWords.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>

namespace {

using namespace Qt::StringLiterals;
using Event = SessionReport::Event;

constexpr qsizetype longestReason = 120;
constexpr qint64 second = 1000;

// What others worded, fit for a label. Colour codes take their digits along.
QString plain(const QString& text)
{
    static const QRegularExpression codes(u"\x03(\\d{1,2}(,\\d{1,2})?)?|[\\x00-\\x1f\\x7f]"_s);
    QString result = QString(text).remove(codes).trimmed();
    if (result.endsWith(u'.'))
        result.chop(1);
    if (result.size() > longestReason)
        result = result.left(longestReason).trimmed() + u'…';
    return result;
}

struct Told
{
    QString who;
    QString server;
    QString because; // ": reason", or nothing
};

QString orSomebody(const QString& who)
{
    return who.isEmpty() ? u"somebody"_s : who;
}

struct Row
{
    Event event;
    QString (*words)(const Told& told);
    bool tellsWhatComes;
};

constexpr std::array<Row, 11> rows{{
    {Event::SignedOut, [](const Told&) { return u"You are signed out."_s; }, false},
    {Event::Connecting,
     [](const Told& told) -> QString { return "Looking for "_L1 + told.server + " ..."_L1; },
     false},
    {Event::Cancelled, [](const Told&) { return u"You gave up the attempt."_s; }, false},
    {Event::Failed,
     [](const Told& told) -> QString {
         return "No answer from "_L1 + told.server + told.because + u'.';
     },
     true},
    {Event::Connected,
     [](const Told& told) -> QString {
         return told.server + " is there. Waiting to be let in ..."_L1;
     },
     false},
    {Event::NickRefused,
     [](const Told& told) -> QString {
         return (told.who.isEmpty() ? u"The name"_s : "The name "_L1 + told.who) +
                " was refused"_L1 + told.because +
                ". Type another one in the box that asks for it. Is it closed? Choose Sign Out "
                "under File and sign in with another name."_L1;
     },
     false},
    {Event::Welcome, [](const Told&) { return QString(); }, false},
    {Event::RoomRefused, [](const Told& told) -> QString { return told.because.mid(2) + u'.'; },
     false},
    {Event::Kicked,
     [](const Told& told) -> QString {
         return "You were kicked by "_L1 + orSomebody(told.who) + told.because + u'.';
     },
     true},
    {Event::Killed,
     [](const Told& told) -> QString {
         return orSomebody(told.who) + " ended your session"_L1 + told.because + u'.';
     },
     true},
    {Event::ServerClosed,
     [](const Told& told) -> QString {
         return told.server + " closed the connection"_L1 + told.because + u'.';
     },
     true},
}};

bool isThisMachine(const QString& server)
{
    return server == "localhost"_L1 || server.startsWith("127."_L1) || server == "::1"_L1;
}

QString whatComes(const SessionReport& report)
{
    if (report.nextTry.isForever())
        return report.event == Event::Failed ? u" Sign in to try again."_s
                                             : u" Sign in to come back."_s;
    const qint64 seconds = (report.nextTry.remainingTime() + second - 1) / second;
    return " Next try in "_L1 + QString::number(seconds) + " s."_L1;
}

} // namespace

QString sessionWords(const SessionReport& report)
{
    const Row& row = *std::find_if(rows.begin(), rows.end(),
                                   [&](const Row& one) { return one.event == report.event; });
    const QString reason = plain(report.reason);
    QString words = row.words({
        .who = plain(report.who),
        .server = plain(report.server),
        .because = reason.isEmpty() ? QString() : ": "_L1 + reason,
    });
    if (row.tellsWhatComes)
        words += whatComes(report);
    // Who starts the program from a menu and knows of no server.
    if (report.event == Event::Failed && isThisMachine(report.server))
        words += " Is your network elsewhere? Choose it with the link below."_L1;
    return words;
}
