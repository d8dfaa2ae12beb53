#pragma once

#include "session/SessionDesk.h"
#include "wire/IRCMessage.h"

class RichTextBox;

// The numeric replies (RFC 1459, section 6, and what servers have added since). They are
// addressed: the nick comes first, and what they have to say follows.
class Numerics final
{
public:
    explicit Numerics(const SessionDesk& desk)
        : m_desk(desk)
    {
    }

    void nothing(const IRCMessage&) const {}
    void serverGreeting(const IRCMessage& message) const;
    void userStatistics(const IRCMessage& message) const;
    void commandError(const IRCMessage& message) const;
    void isonReply(const IRCMessage& message) const;

    void noNickGiven(const IRCMessage& message) const;
    void erroneousNick(const IRCMessage& message) const;
    void nickInUse(const IRCMessage& message) const;

    void cannotJoin(const IRCMessage& message) const;
    void roomModes(const IRCMessage& message) const;
    void roomUrl(const IRCMessage& message) const;
    void roomTopic(const IRCMessage& message) const;
    void topicSetter(const IRCMessage& message) const;
    void names(const IRCMessage& message) const;
    void listEntry(const IRCMessage& message) const;
    void listEnd(const IRCMessage& message) const;

    void whoisAway(const IRCMessage& message) const;
    void whoisRemark(const IRCMessage& message) const;
    void whoisUser(const IRCMessage& message) const;
    void whoisServer(const IRCMessage& message) const;
    void whoisIdle(const IRCMessage& message) const;
    void whoisRooms(const IRCMessage& message) const;
    void whoisSpecial(const IRCMessage& message) const;

private:
    void PassWord() const;
    void reportRefusal(const QString& nick, const QString& reason) const;
    void writeWhois(const QString& nick, const QString& text) const;
    RichTextBox& whoisView(const QString& nick) const;

    const SessionDesk& m_desk;
    mutable bool m_nickBoxIsOpen = false; // lines are handled behind it
};
