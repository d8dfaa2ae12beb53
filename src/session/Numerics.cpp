#include "session/Numerics.h"

#include "common/ControlCharacters.h"
#include "common/Conversions.h"
#include "common/SessionVariables.h"
#include "common/TextHelpers.h"
#include "common/UnixDate.h"
#include "contacts/ContactList.h"
#include "platform/Dialogs.h"
#include "platform/EventLoop.h"
#include "room/ChannelTable.h"
#include "room/ListsForm.h"
#include "room/ModeLine.h"
#include "room/TopicField.h"
#include "session/Connection.h"
#include "session/Ports.h"
#include "talk/QueryTable.h"
#include "text/TextWriter.h"
#include "view/RichTextBox.h"
#include "wire/Winsock.h"

#include <QLocale>

using namespace Qt::StringLiterals;

namespace {

constexpr auto P = &GetParams;

// The nick that a whois line is about, in the colour and weight of all of them.
QString whoisHead(const QString& nick)
{
    return strColor % "05"_L1 % strBold % nick % strBold;
}

} // namespace

void Numerics::serverGreeting(const IRCMessage& message) const
{
    PassWord();
    m_desk.login.cmdSignout_Click();
    m_desk.login.Hide();
    writeMain("* "_L1 + P(message, 2, -1));
}

void Numerics::PassWord() const
{
    const QString password = m_desk.login.sessionPassword();
    if (password.isEmpty())
        return;
    m_desk.prompts.unloadPassword();
    m_desk.connection.SendData("IDENTIFY "_L1 + password);
}

void Numerics::userStatistics(const IRCMessage& message) const
{
    writeMain(strColor % "06"_L1 % P(message, 2, -1));
}

void Numerics::commandError(const IRCMessage& message) const
{
    writeMain(strColor % "04* "_L1 % P(message, 2, -1));
}

void Numerics::isonReply(const IRCMessage& message) const
{
    m_desk.buddies.AddUsers(P(message, 2, -1));
}

void Numerics::noNickGiven(const IRCMessage&) const
{
    m_desk.prompts.showUseNick();
}

void Numerics::erroneousNick(const IRCMessage&) const
{
    m_desk.dialogs.MsgBox(u"Choose Another Nick"_s, u"Invalid Name Or Nick Already In Use"_s);
    m_desk.prompts.showUseNick();
}

void Numerics::nickInUse(const IRCMessage& message) const
{
    SessionVariables& variables = m_desk.variables;
    // Until 001 it comes from the settings, and those texts are padded.
    if (P(message, 2, 2) == beforeNul(variables.MyNick)) {
        // AltNick is empty at the first collision, so this asks for no nick at all; the form that
        // follows is what helps.
        variables.MyNick = variables.AltNick;
        variables.AltNick = variables.MyNick;
        m_desk.connection.SendData("NICK "_L1 + variables.MyNick);
    }
    m_desk.prompts.showUseNick();
}

void Numerics::cannotJoin(const IRCMessage& message) const
{
    const QString text = "You cannot join "_L1 + P(message, 2, 2) + " : "_L1 + P(message, 3, -1);
    writeMain(strColor % "04"_L1 % text);
    {
        const HeldEvents held(m_desk.connection.sock());
        m_desk.dialogs.MsgBox(text, u"Error"_s);
    }
    // There is only this room, so there is nothing to stay for.
    m_desk.connection.mnu_File_Disconnect_Click();
    m_desk.login.cmdSignout_Click();
    m_desk.login.setSignCaption(u"Sign In"_s);
    m_desk.login.Show();
    m_desk.login.setEntriesLocked(false);
    m_desk.channel.Hide();
}

void Numerics::roomModes(const IRCMessage& message) const
{
    m_desk.modeLine.ApplyModeLine(P(message, 2, 2), P(message, 3, -1));
}

void Numerics::roomUrl(const IRCMessage& message) const
{
    const int index = m_desk.channels.FindChannel(P(message, 2, 2));
    if (index == -1)
        return;
    m_desk.writer.WriteView(m_desk.channels.Channels(index).form.DataIn(),
                            strColor % "03Channel URL"_L1 % strColor % strUnderline % u':' %
                                strUnderline % u' ' % strColor % "12"_L1 % P(message, 3, -1) %
                                strColor);
}

void Numerics::roomTopic(const IRCMessage& message) const
{
    const int index = m_desk.channels.FindChannel(P(message, 2, 2));
    if (index == -1)
        return;
    Room& room = m_desk.channels.Channels(index);
    RichTextBox& topic = room.form.rtbTopic();
    TopicField::show(topic, m_desk.writer, P(message, 3, -1));
    m_desk.channel.DataIn().setText({});
    m_desk.events.Pause(0.2);
    writeMain(strColor % "3You have entered to the chat room"_L1);
    writeMain(strColor % "4Welcome To "_L1 % strBold % strColor % "12Quill Harbor Messenger"_L1 %
              strColor % u'!');
    writeMain(strColor % "5Checking Your Internet Connection "_L1 % strColor %
              "14 Connecting please wait... "_L1 % strColor);
    m_desk.writer.WriteView(room.form.DataIn(), strColor % "03Topic is \""_L1 % strColor %
                                                    P(message, 3, -1) % strColor % "03\""_L1);
    topic.setSelStart(0);
    TopicField::setLocked(topic, true);
}

void Numerics::topicSetter(const IRCMessage& message) const
{
    const int index = m_desk.channels.FindChannel(P(message, 2, 2));
    if (index == -1)
        return;
    const QDateTime when = DateFromUnix(toInt32(P(message, 4, 4)));
    m_desk.writer.WriteView(m_desk.channels.Channels(index).form.DataIn(),
                            strColor % "03Topic set by "_L1 % strBold % P(message, 3, 3) % strBold %
                                " on "_L1 % strBold %
                                QLocale::system().toString(when, QLocale::ShortFormat) % strBold);
}

void Numerics::names(const IRCMessage& message) const
{
    const int index = m_desk.channels.FindChannel(message.Params.value(2));
    if (index == -1)
        return;
    Room& room = m_desk.channels.Channels(index);
    for (const QString& nick : P(message, 4, -1).split(u' '))
        room.nicks.AddNick(nick);
}

void Numerics::listEntry(const IRCMessage& message) const
{
    if (m_desk.variables.ListFetching)
        m_desk.channelInfo.AddBEI(P(message, 3, 3), P(message, 4, 4), P(message, 5, 5));
}

void Numerics::listEnd(const IRCMessage&) const
{
    if (!m_desk.channelInfo.Visible())
        m_desk.channelInfo.Show();
    m_desk.variables.ListFetching = false;
}

void Numerics::whoisAway(const IRCMessage& message) const
{
    const QString nick = P(message, 2, 2);
    writeWhois(nick, whoisHead(nick) % " is away: "_L1 % P(message, 3, -1));
}

void Numerics::whoisRemark(const IRCMessage& message) const
{
    const QString nick = P(message, 2, 2);
    writeWhois(nick, whoisHead(nick) % u' ' % P(message, 3, -1));
}

void Numerics::whoisUser(const IRCMessage& message) const
{
    const QString nick = P(message, 2, 2);
    writeWhois(nick, u" "_s);
    // From the host on as the server wrote it, its "*" included.
    writeWhois(nick, whoisHead(nick) % " is "_L1 % P(message, 3, 3) % u'@' % P(message, 4, -1));
}

void Numerics::whoisServer(const IRCMessage& message) const
{
    const QString nick = P(message, 2, 2);
    writeWhois(nick, whoisHead(nick) % " is using: "_L1 % P(message, 3, 3) % " ( "_L1 %
                         P(message, 4, -1) % " )"_L1);
}

void Numerics::whoisIdle(const IRCMessage& message) const
{
    const QString nick = P(message, 2, 2);
    writeWhois(nick, whoisHead(nick) % u' ' % P(message, 3, 3) % " seconds idle / "_L1 %
                         P(message, 4, 4) % " sign-on time"_L1);
}

void Numerics::whoisRooms(const IRCMessage& message) const
{
    const QString nick = P(message, 2, 2);
    writeWhois(nick, whoisHead(nick) % " is on: "_L1 % P(message, 3, -1));
}

void Numerics::whoisSpecial(const IRCMessage& message) const
{
    // A parameter cannot hold the blank that this looks for: the nick appears twice.
    QString left;
    QString right;
    SplitAt(P(message, 2, 2), u' ', left, right);
    writeWhois(left, whoisHead(left) % u' ' % right);
}

void Numerics::writeMain(const QString& text) const
{
    m_desk.writer.WriteView(m_desk.channel.DataIn(), text);
}

void Numerics::writeWhois(const QString& nick, const QString& text) const
{
    m_desk.writer.WriteView(whoisView(nick), text);
}

RichTextBox& Numerics::whoisView(const QString& nick) const
{
    if (!m_desk.variables.WhoisQuery)
        return m_desk.channel.DataIn();
    const int slot = m_desk.queries.FindQuery(nick);
    return slot == -1 ? m_desk.channel.DataIn() : m_desk.queries.Queries(slot).DataIn();
}
