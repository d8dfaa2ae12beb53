#include "session/Interpreter.h"

#include "commands/CommandProcessor.h"
#include "common/ControlCharacters.h"
#include "common/SessionVariables.h"
#include "common/TextHelpers.h"
#include "controls/ListBox.h"
#include "platform/EventLoop.h"
#include "room/ChannelTable.h"
#include "room/ModeLine.h"
#include "room/TopicField.h"
#include "session/Connection.h"
#include "session/Ctcp.h"
#include "session/NickEvents.h"
#include "session/Ports.h"
#include "talk/QueryTable.h"
#include "text/IncomingText.h"
#include "text/StatusLine.h"
#include "text/TextWriter.h"
#include "view/RichTextBox.h"
#include "wire/Winsock.h"

using namespace Qt::StringLiterals;

namespace {

constexpr auto noAutoJoin = "<none>"_L1;
constexpr int killColor = 2;

bool isRoomName(const QString& target)
{
    return target.startsWith(u'#') || target.startsWith(u'&');
}

} // namespace

const Interpreter::Row Interpreter::rows[]{
    {"001"_L1, &Interpreter::welcome},
    {"002 003 004 005"_L1, &Numerics::serverGreeting},
    {"ping"_L1, &Interpreter::ping},
    {"join"_L1, &Interpreter::join},
    {"privmsg"_L1, &Interpreter::privmsg},
    {"nick"_L1, &Interpreter::nick},
    {"part"_L1, &Interpreter::part},
    {"367 346 348"_L1, &Numerics::listEntry},
    {"368 347 349"_L1, &Numerics::listEnd},
    {"353"_L1, &Numerics::names},
    {"mode"_L1, &Interpreter::mode},
    {"quit"_L1, &Interpreter::quit},
    {"kick"_L1, &Interpreter::kick},
    {"332"_L1, &Numerics::roomTopic},
    {"topic"_L1, &Interpreter::topic},
    {"333"_L1, &Numerics::topicSetter},
    {"366"_L1, &Numerics::nothing},
    {"324"_L1, &Numerics::roomModes},
    {"notice"_L1, &Interpreter::notice},
    {"433"_L1, &Numerics::nickInUse},
    {"372 375 376 422"_L1, &Numerics::nothing}, // no view is for the message of the day
    {"251 252 253 254 255 265 266"_L1, &Numerics::userStatistics},
    {"303"_L1, &Numerics::isonReply},
    {"305 306 329"_L1, &Numerics::nothing},
    {"484 482 461 412 403 421 401 481 402"_L1, &Numerics::commandError},
    {"471 473 474 475"_L1, &Numerics::cannotJoin},
    {"321 323"_L1, &Numerics::nothing},
    {"328"_L1, &Numerics::roomUrl},
    {"301"_L1, &Numerics::whoisAway},
    {"431"_L1, &Numerics::noNickGiven},
    {"432"_L1, &Numerics::erroneousNick},
    {"307 313"_L1, &Numerics::whoisRemark},
    {"311"_L1, &Numerics::whoisUser},
    {"312"_L1, &Numerics::whoisServer},
    {"317"_L1, &Numerics::whoisIdle},
    {"318"_L1, &Numerics::nothing},
    {"319"_L1, &Numerics::whoisRooms},
    {"320"_L1, &Numerics::whoisSpecial},
    {"kill"_L1, &Interpreter::kill},
};

Interpreter::Interpreter(const SessionDesk& desk)
    : m_desk(desk)
    , m_numerics(m_desk)
{
    for (const Row& row : rows) {
        for (const QString& word : QString(row.words).split(u' '))
            m_byWord.insert(word, &row.handler);
    }
}

void Interpreter::interpret(QString line) const
{
    line.remove(u'\n');
    const IRCMessage message = ParseMessage(line);
    m_desk.events.DoEventsAgain();
    if (message.Command.isEmpty())
        return;
    const Handler* handler = handlerOf(message.Command);
    if (!handler)
        anythingElse(message);
    else if (const auto* command = std::get_if<Command>(handler))
        (this->**command)(message);
    else
        (m_numerics.*std::get<Numeric>(*handler))(message);
}

// Lines of one kind come in rows.
const Interpreter::Handler* Interpreter::handlerOf(QStringView word) const
{
    if (word != m_lastWord) {
        m_lastWord = word.toString();
        m_lastHandler = m_byWord.value(m_lastWord.toLower());
    }
    return m_lastHandler;
}

void Interpreter::welcome(const IRCMessage& message) const
{
    SessionVariables& variables = m_desk.variables;
    variables.MyNick = message.word(1);
    m_desk.connection.report({.event = SessionReport::Event::Welcome});
    m_desk.mainView.write("* "_L1 + message.from(2));
    m_desk.channels.main().modes.Update();
    m_desk.connection.SendData("MODE "_L1 + variables.MyNick + " +i"_L1);
    if (beforeNul(variables.AutoJoin) != noAutoJoin)
        m_desk.connection.SendData(
            m_desk.commands.ProcessInput({}, "JOIN "_L1 + variables.AutoJoin));
    m_desk.channel.setVisible(true);
    m_desk.channel.Show();
}

void Interpreter::ping(const IRCMessage& message) const
{
    m_desk.connection.SendData("PONG :"_L1 + message.word(1));
}

void Interpreter::join(const IRCMessage& message) const
{
    if (message.Nick.toLower() == m_desk.variables.ownNick().toLower()) {
        m_desk.channels.AddChannel(message.from(1));
        m_desk.connection.SendData("MODE "_L1 + message.from(1));
        m_desk.channels.main().nicks.clearChatterCount();
        return;
    }
    Room* room = m_desk.channels.entered(message.word(1));
    if (!room)
        return;
    const QString nick = room->nicks.AddNick(message.Nick);
    m_desk.writeIn(*room, strColor % "03"_L1 % strBold % nick % strBold % " has joined "_L1 %
                              strBold % room->ChannelName);
}

void Interpreter::privmsg(const IRCMessage& message) const
{
    const QString target = message.word(1);
    const QString text = message.from(2);
    if (isRoomName(target)) {
        if (const Room* room = m_desk.channels.entered(target))
            m_desk.roomText.PutText(room->form.DataIn(), message.Nick, text);
    } else if (text.startsWith(strAction)) {
        m_desk.ctcp.HandleCTCP(message.Nick, text);
    } else {
        privateMessage(message);
    }
}

void Interpreter::privateMessage(const IRCMessage& message) const
{
    const bool known = m_desk.queries.QueryVisible(message.Nick);
    if (!known)
        m_desk.queries.OpenQuery(message.Nick, message.Prefix.toString());
    PrivateWindow* window = m_desk.queries.windowOf(message.Nick);
    if (!window)
        return; // private talk is off
    // Of two different kinds, so unequal as soon as there is a "!": the host is always renewed.
    if (known && message.Prefix != window->QueryHost)
        window->setPeerHost(TextAfter(message.Prefix.toString(), u'!'));
    window->setPeer(message.Nick);
    window->PutText(message.Nick, message.from(2));
}

void Interpreter::nick(const IRCMessage& message) const
{
    const bool isOwn = message.Nick == m_desk.variables.ownNick();
    if (isOwn) {
        m_desk.variables.MyNick = message.word(1);
        m_desk.mainView.write(strColor % "03Your nick is now "_L1 % strBold %
                              m_desk.variables.MyNick);
    }
    m_desk.nickEvents.NickChanged(message.Nick, message.from(1));
    if (isOwn)
        m_desk.channels.main().modes.Update();
}

void Interpreter::part(const IRCMessage& message) const
{
    if (message.Nick == m_desk.variables.ownNick())
        return; // the room stays as it is
    Room* room = m_desk.channels.entered(message.asItCame(1));
    if (!room)
        return;
    room->nicks.RemoveNick(message.Nick);
    m_desk.writeIn(*room, strColor % "03"_L1 % strBold % message.Nick % strBold % " has left "_L1 %
                              strBold % room->ChannelName);
}

void Interpreter::mode(const IRCMessage& message) const
{
    const QString target = message.word(1);
    const bool isOwn = target == m_desk.variables.ownNick();
    const Room* room = m_desk.channels.entered(target);
    if (!isOwn && !room)
        return;
    const QStringView who = message.Nick.isEmpty() ? message.Prefix : QStringView(message.Nick);
    const QString line =
        strColor % "03"_L1 % strBold % who % strBold % " sets mode: "_L1 % message.from(2);
    if (room)
        m_desk.writeIn(*room, line);
    if (isOwn)
        m_desk.mainView.write(line);
    m_desk.modeLine.ApplyModeLine(target, message.from(2));
}

void Interpreter::quit(const IRCMessage& message) const
{
    m_desk.nickEvents.NickQuit(message.Nick, message.from(1));
}

void Interpreter::kick(const IRCMessage& message) const
{
    const QString victim = message.word(2);
    Room* room = m_desk.channels.entered(message.word(1));
    if (!room)
        return;
    m_desk.writeIn(*room, strColor % "04"_L1 % strBold % victim % strBold % " was kicked from "_L1 %
                              strBold % message.word(1) % strBold % " by "_L1 % strBold %
                              message.Nick % strBold % " [ "_L1 % message.from(3) % " ]"_L1);
    room->nicks.RemoveNick(victim);
    if (victim == m_desk.variables.ownNick())
        ownKick(message, *room);
}

void Interpreter::ownKick(const IRCMessage& message, Room& room) const
{
    room.Tag = u"NOPART"_s;
    m_desk.channel.Hide();
    m_desk.login.Show();
    m_desk.login.setSignCaption(u"Sign In"_s);
    m_desk.login.Login_UnLog();
    m_desk.mainView.write(strColor % "04You were kicked from "_L1 % strBold % message.word(1) %
                          strBold % " by "_L1 % strBold % message.Nick % strBold % " [ "_L1 %
                          message.from(3) % " ]"_L1);
    m_desk.connection.closeSock();
    m_desk.connection.report(
        {.event = SessionReport::Event::Kicked, .who = message.Nick, .reason = message.from(3)});
    clearRoomOnScreen();
    room.modes.ClearModes();
    m_desk.connection.closeIdent();
    room.nicks.clearChatterCount();
    m_desk.events.Pause(0.1);
    m_desk.connection.enableConnecting();
    room.modes.Update();
    room.nicks.showNoChatters();
}

void Interpreter::topic(const IRCMessage& message) const
{
    Room* room = m_desk.channels.entered(message.word(1));
    if (!room)
        return;
    TopicField::show(room->form.rtbTopic(), m_desk.writer, message.from(2));
    m_desk.writeIn(*room, strColor % "03Topic changed by "_L1 % strBold % message.Nick % strBold %
                              " : "_L1 % message.from(2));
}

void Interpreter::notice(const IRCMessage& message) const
{
    const QString targetAndText = message.from(1);
    if (targetAndText.endsWith("please choose a different nick."_L1)) {
        m_desk.channel.lstNicks().setEnabled(false);
        m_desk.prompts.showPassword();
        return;
    }
    heedNicknameService(targetAndText);
    const QString text = message.from(2);
    if (message.Nick.isEmpty())
        m_desk.mainView.write(strColor % "05"_L1 % text);
    else
        m_desk.mainView.write(strColor % "05"_L1 % strBold % "NOTICE"_L1 % strBold % strColor %
                              u' ' % strBold % message.Nick % strBold % ": "_L1 % text);
}

void Interpreter::heedNicknameService(const QString& targetAndText) const
{
    const auto says = [&](QLatin1StringView text) {
        return targetAndText == m_desk.variables.ownNick() + text;
    };
    if (says(" Password accepted - you are now recognized."_L1)) {
        m_desk.prompts.unloadPassword();
        m_desk.channel.lstNicks().setEnabled(true);
        m_desk.channel.Show();
    }
    if (says(" Password incorrect."_L1)) {
        m_desk.channel.lstNicks().setEnabled(false);
        m_desk.prompts.showPassword();
    }
    if (says(" You are already identified."_L1)) {
        m_desk.channel.lstNicks().setEnabled(true);
        m_desk.prompts.unloadPassword();
    }
}

void Interpreter::kill(const IRCMessage& message) const
{
    const QString victim = message.word(1);
    const bool isOwn = victim == m_desk.variables.ownNick();
    if (isOwn)
        ownKill(message);
    m_desk.status.WriteStatus(strBold % (isOwn ? u"You"_s : victim) % strBold %
                                  (isOwn ? " were Killed ["_L1 : " was killed ["_L1) %
                                  message.from(2) % u']',
                              killColor);
}

void Interpreter::ownKill(const IRCMessage& message) const
{
    Room& room = m_desk.channels.main();
    m_desk.connection.closeSock();
    m_desk.connection.report(
        {.event = SessionReport::Event::Killed, .who = message.Nick, .reason = message.from(2)});
    room.modes.ClearModes();
    clearRoomOnScreen();
    m_desk.connection.closeIdent();
    m_desk.connection.enableConnecting();
    room.modes.Update();
    room.nicks.showNoChatters();
    room.nicks.clearChatterCount();
}

void Interpreter::anythingElse(const IRCMessage& message) const
{
    if (message.Command == "ERROR"_L1)
        m_desk.connection.setFarewell(message.from(1));
    m_desk.mainView.write("*** "_L1 % strBold % message.Command % strBold % u' ' % message.from(1));
}

void Interpreter::clearRoomOnScreen() const
{
    m_desk.channel.lstNicks().Clear();
    m_desk.channel.rtbTopic().setText({});
}
