#include "commands/NickActions.h"

#include "commands/CommandProcessor.h"
#include "common/ControlCharacters.h"
#include "common/OneLine.h"
#include "common/SessionVariables.h"
#include "controls/ListBox.h"
#include "platform/Dialogs.h"
#include "room/Room.h"
#include "talk/Blocking.h"
#include "talk/QueryTable.h"
#include "wire/LineSink.h"
#include "wire/Winsock.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace {

// The one reply that keeps the kick from being sent.
constexpr QChar backspace{8};

} // namespace

// What the whole room sees as an action of the user; only while connected.
struct NickActions::Greeting
{
    QLatin1StringView entry;
    QString (*text)(const QString& nick);
};

const std::array<NickActions::Greeting, 5> NickActions::greetings{{
    {"mnu_hi"_L1, [](const QString& nick) -> QString { return "Says Hi To "_L1 + nick; }},
    {"mnu_welcome"_L1,
     [](const QString& nick) -> QString {
         return "Welcomes "_L1 + nick + " To Harbor ChatRoom"_L1;
     }},
    {"mnu_hugs"_L1,
     [](const QString& nick) -> QString { return "Hugs "_L1 + nick + " tightly and warmly."_L1; }},
    {"mnu_handshake"_L1,
     [](const QString& nick) -> QString { return "Handshakes with "_L1 + nick; }},
    {"mnu_slap"_L1,
     [](const QString& nick) -> QString {
         return "slaps "_L1 % strColor % u'4' % nick % strColor %
                "6 around a bit with a large trout."_L1;
     }},
}};

struct NickActions::Rank
{
    QLatin1StringView entry;
    MenuEntry& (*menuEntry)(const RankEntries& entries);
    QLatin1StringView give; // any other caption takes the rank away
    QLatin1StringView take;
    QChar letter;
    bool (NickList::*holds)(const QString& nick) const;
};

const std::array<NickActions::Rank, 3> NickActions::ranks{{
    {"mnu_nicks_op"_L1, [](const RankEntries& e) -> MenuEntry& { return e.mnu_nicks_op; }, "&Op"_L1,
     "De&Op"_L1, u'o', &NickList::isOp},
    {"mnu_nicks_halfop"_L1, [](const RankEntries& e) -> MenuEntry& { return e.mnu_nicks_halfop; },
     "&HalfOp"_L1, "De&HalfOp"_L1, u'h', &NickList::isHalfOp},
    {"mnu_nicks_voice"_L1, [](const RankEntries& e) -> MenuEntry& { return e.mnu_nicks_voice; },
     "&Voice"_L1, "De&Voice"_L1, u'v', &NickList::isVoice},
}};

struct NickActions::Action
{
    QLatin1StringView entry;
    void (NickActions::*handler)();
};

const std::array<NickActions::Action, 6> NickActions::actions{{
    {"mnu_nicks_pm"_L1, &NickActions::mnu_nicks_pm_Click},
    {"mnu_blocked"_L1, &NickActions::mnu_blocked_Click},
    {"mnu_ownaction"_L1, &NickActions::mnu_ownaction_Click},
    {"mnu_nicks_whois"_L1, &NickActions::mnu_nicks_whois_Click},
    {"mnu_nicks_kick"_L1, &NickActions::mnu_nicks_kick_Click},
    {"mnu_nicks_ban"_L1, &NickActions::mnu_nicks_ban_Click},
}};

NickActions::NickActions(Parts parts)
    : m_parts(std::move(parts))
{
}

QStringList NickActions::entries()
{
    QStringList names;
    for (const Greeting& greeting : greetings)
        names += greeting.entry;
    for (const Rank& rank : ranks)
        names += rank.entry;
    for (const Action& action : actions)
        names += action.entry;
    return names;
}

void NickActions::click(const QString& entry)
{
    for (const Greeting& greeting : greetings) {
        if (entry == greeting.entry && isConnected())
            return sendCommand("me "_L1 + greeting.text(nick()));
    }
    for (const Rank& rank : ranks) {
        if (entry == rank.entry)
            return changeRank(rank);
    }
    for (const Action& action : actions) {
        if (entry == action.entry)
            return (this->*action.handler)();
    }
}

void NickActions::lstNicks_MouseDown()
{
    const QString selected = nick();
    for (const Rank& rank : ranks) {
        const bool holds = (m_parts.room.nicks.*rank.holds)(selected);
        rank.menuEntry(m_parts.ranks).setCaption(holds ? rank.take : rank.give);
    }
}

void NickActions::lstNicks_DblClick()
{
    if (m_parts.server.sockState() == Winsock::Closed)
        return;
    const QString selected = nick();
    if (!holdsRow(m_parts.ignoreRows(), blockedRow(selected)))
        m_parts.queries.talkTo(selected);
}

QString NickActions::nick() const
{
    return StripRank(m_parts.room.form.lstNicks().Text());
}

bool NickActions::isConnected() const
{
    return m_parts.server.sockState() == Winsock::Connected;
}

void NickActions::sendCommand(const QString& command)
{
    m_parts.server.SendData(m_parts.commands.ProcessInput(m_parts.room.ChannelName, command));
}

void NickActions::changeRank(const Rank& rank)
{
    const bool give = rank.menuEntry(m_parts.ranks).Caption() == rank.give;
    m_parts.server.SendData("MODE "_L1 % m_parts.room.ChannelName % u' ' % (give ? u'+' : u'-') %
                            rank.letter % u' ' % nick());
}

void NickActions::mnu_nicks_pm_Click()
{
    // No look at the ignore list beforehand: who is on it makes this a failure.
    if (isConnected())
        m_parts.queries.talkTo(nick());
}

void NickActions::mnu_blocked_Click()
{
    const QString title = u"Block"_s;
    // The first row counts as no row at all, whoever stands there.
    if (m_parts.room.form.lstNicks().ListIndex() <= 0)
        return;
    const QString selected = nick();
    const QString refusal = blockRefusal(selected, m_parts.variables, m_parts.room);
    if (!refusal.isEmpty())
        return m_parts.dialogs.MsgBox(refusal, title);
    const QString blocked = blockedRow(selected);
    ListBox& rows = m_parts.ignoreRows();
    // A second row for the same nick is refused only while some row is selected there.
    if (!rows.Text().isEmpty() && holdsRow(rows, blocked))
        return m_parts.dialogs.MsgBox(sameNickRefusal, title);
    rows.AddItem(blocked);
    m_parts.server.SendData(
        ignoredNotice(selected, m_parts.variables.MyNick, " [Quill Harbor Messenger]"_L1));
}

void NickActions::mnu_ownaction_Click()
{
    // Cancel gives no text, and an action without one is sent all the same.
    const QString reply =
        m_parts.dialogs.InputBox(u"Type Your Own Action Message"_s, u"Action Message"_s);
    sendCommand("me "_L1 + oneLine(reply));
}

void NickActions::mnu_nicks_whois_Click()
{
    sendCommand("WHOIS "_L1 + nick());
}

void NickActions::mnu_nicks_kick_Click()
{
    // Read before the question: the selection can change behind it.
    const QString selected = nick();
    const QString channel = m_parts.room.ChannelName;
    const QString reason = m_parts.dialogs.InputBox("Why would you like to kick the user '"_L1 %
                                                        selected % "' from "_L1 % channel % u'?',
                                                    u"Kick User"_s);
    // Cancel gives no reason, and that does not stop the kick.
    if (reason != backspace)
        m_parts.server.SendData("KICK "_L1 % channel % u' ' % selected % " :"_L1 % oneLine(reason));
}

void NickActions::mnu_nicks_ban_Click()
{
    m_parts.server.SendData("MODE "_L1 % m_parts.room.ChannelName % " +b "_L1 % nick() % "!*@*"_L1);
}
