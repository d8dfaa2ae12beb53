#include "session/Numerics.h"

#include "common/ControlCharacters.h"
#include "common/Conversions.h"
#include "common/SessionVariables.h"
#include "common/TextHelpers.h"
#include "common/UnixDate.h"
#include "contacts/ContactList.h"
#include "platform/Dialogs.h"
#include "platform/LocaleTexts.h"
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

#include <QScopedValueRollback>

using namespace Qt::StringLiterals;

namespace {

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
    m_desk.mainView.write("* "_L1 + message.from(2));
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
    m_desk.mainView.write(strColor % "06"_L1 % message.from(2));
}

void Numerics::commandError(const IRCMessage& message) const
{
    m_desk.mainView.write(strColor % "04* "_L1 % message.from(2));
}

void Numerics::isonReply(const IRCMessage& message) const
{
    m_desk.buddies.AddUsers(message.from(2));
}

void Numerics::noNickGiven(const IRCMessage&) const
{
    reportRefusal({}, u"no name was given"_s);
    m_desk.prompts.showUseNick();
}

void Numerics::erroneousNick(const IRCMessage& message) const
{
    reportRefusal(message.word(2), message.from(3));
    if (m_nickBoxIsOpen)
        return; // that one says it already, and a flood would pile them up
    {
        const QScopedValueRollback open(m_nickBoxIsOpen, true);
        m_desk.dialogs.MsgBox(u"Choose Another Nick"_s, u"Invalid Name Or Nick Already In Use"_s);
    }
    m_desk.prompts.showUseNick();
}

void Numerics::reportRefusal(const QString& nick, const QString& reason) const
{
    m_desk.connection.report(
        {.event = SessionReport::Event::NickRefused, .who = nick, .reason = reason});
}

void Numerics::nickInUse(const IRCMessage& message) const
{
    SessionVariables& variables = m_desk.variables;
    reportRefusal(message.word(2), message.from(3));
    // Until 001 it comes from the settings, and those texts are padded.
    if (message.word(2) == variables.ownNick()) {
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
    const QString text = "You cannot join "_L1 + message.word(2) + " : "_L1 + message.from(3);
    m_desk.mainView.write(strColor % "04"_L1 % text);
    {
        const HeldEvents held(m_desk.connection.sock());
        m_desk.dialogs.MsgBox(text, u"Error"_s);
    }
    // There is only this room, so there is nothing to stay for.
    m_desk.connection.mnu_File_Disconnect_Click();
    m_desk.connection.report({.event = SessionReport::Event::RoomRefused, .reason = text});
    m_desk.login.cmdSignout_Click();
    m_desk.login.setSignCaption(u"Sign In"_s);
    m_desk.login.Show();
    m_desk.login.setEntriesLocked(false);
    m_desk.channel.Hide();
}

void Numerics::roomModes(const IRCMessage& message) const
{
    m_desk.modeLine.ApplyModeLine(message.word(2), message.from(3));
}

void Numerics::roomUrl(const IRCMessage& message) const
{
    const Room* room = m_desk.channels.entered(message.word(2));
    if (!room)
        return;
    m_desk.writeIn(*room, strColor % "03Channel URL"_L1 % strColor % strUnderline % u':' %
                              strUnderline % u' ' % strColor % "12"_L1 % message.from(3) %
                              strColor);
}

void Numerics::roomTopic(const IRCMessage& message) const
{
    Room* room = m_desk.channels.entered(message.word(2));
    if (!room)
        return;
    RichTextBox& topic = room->form.rtbTopic();
    TopicField::show(topic, m_desk.writer, message.from(3));
    m_desk.mainView.view().setText({});
    m_desk.connection.pause(0.2);
    m_desk.mainView.write(strColor % "3You have entered to the chat room"_L1);
    m_desk.mainView.write(strColor % "4Welcome To "_L1 % strBold % strColor %
                          "12Quill Harbor Messenger"_L1 % strColor % u'!');
    m_desk.mainView.write(strColor % "5Checking Your Internet Connection "_L1 % strColor %
                          "14 Connecting please wait... "_L1 % strColor);
    m_desk.writeIn(*room, strColor % "03Topic is \""_L1 % strColor % message.from(3) % strColor %
                              "03\""_L1);
    topic.setSelStart(0);
    TopicField::setLocked(topic, true);
}

void Numerics::topicSetter(const IRCMessage& message) const
{
    const Room* room = m_desk.channels.entered(message.word(2));
    if (!room)
        return;
    const QDateTime when = DateFromUnix(toInt32(message.word(4)));
    m_desk.writeIn(*room, strColor % "03Topic set by "_L1 % strBold % message.word(3) % strBold %
                              " on "_L1 % strBold % locale_texts::shortDateTime(when) % strBold);
}

void Numerics::names(const IRCMessage& message) const
{
    Room* room = m_desk.channels.entered(message.asItCame(3));
    if (!room)
        return;
    for (const QString& nick : message.from(4).split(u' '))
        room->nicks.AddNick(nick);
}

void Numerics::listEntry(const IRCMessage& message) const
{
    if (m_desk.variables.ListFetching)
        m_desk.channelInfo.AddBEI(message.word(3), message.word(4), message.word(5));
}

void Numerics::listEnd(const IRCMessage&) const
{
    if (!m_desk.channelInfo.Visible())
        m_desk.channelInfo.Show();
    m_desk.variables.ListFetching = false;
}

void Numerics::whoisAway(const IRCMessage& message) const
{
    const QString nick = message.word(2);
    writeWhois(nick, whoisHead(nick) % " is away: "_L1 % message.from(3));
}

void Numerics::whoisRemark(const IRCMessage& message) const
{
    const QString nick = message.word(2);
    writeWhois(nick, whoisHead(nick) % u' ' % message.from(3));
}

void Numerics::whoisUser(const IRCMessage& message) const
{
    const QString nick = message.word(2);
    writeWhois(nick, u" "_s);
    // From the host on as the server wrote it, its "*" included.
    writeWhois(nick, whoisHead(nick) % " is "_L1 % message.word(3) % u'@' % message.from(4));
}

void Numerics::whoisServer(const IRCMessage& message) const
{
    const QString nick = message.word(2);
    writeWhois(nick, whoisHead(nick) % " is using: "_L1 % message.word(3) % " ( "_L1 %
                         message.from(4) % " )"_L1);
}

void Numerics::whoisIdle(const IRCMessage& message) const
{
    const QString nick = message.word(2);
    writeWhois(nick, whoisHead(nick) % u' ' % message.word(3) % " seconds idle / "_L1 %
                         message.word(4) % " sign-on time"_L1);
}

void Numerics::whoisRooms(const IRCMessage& message) const
{
    const QString nick = message.word(2);
    writeWhois(nick, whoisHead(nick) % " is on: "_L1 % message.from(3));
}

void Numerics::whoisSpecial(const IRCMessage& message) const
{
    // A parameter cannot hold the blank that this looks for: the nick appears twice.
    QString left;
    QString right;
    SplitAt(message.word(2), u' ', left, right);
    writeWhois(left, whoisHead(left) % u' ' % right);
}

void Numerics::writeWhois(const QString& nick, const QString& text) const
{
    m_desk.writer.WriteView(whoisView(nick), text);
}

RichTextBox& Numerics::whoisView(const QString& nick) const
{
    PrivateWindow* window = m_desk.variables.WhoisQuery ? m_desk.queries.windowOf(nick) : nullptr;
    return window ? window->DataIn() : m_desk.mainView.view();
}
