#pragma once

#include "session/Numerics.h"
#include "session/SessionDesk.h"
#include "wire/IRCMessage.h"

#include <QHash>

#include <variant>

class RichTextBox;
struct Room;

// Acts on a line of the server (RFC 1459, sections 4 to 6): no other class does. A run-time
// failure gives up the rest of the line and is the caller's to catch.
class Interpreter final
{
public:
    explicit Interpreter(const SessionDesk& desk);
    Q_DISABLE_COPY_MOVE(Interpreter)
    ~Interpreter() = default;

    // One line, with or without its LF. It yields between its parse and its effect, so clicks and
    // timers may change the state that it meets.
    void interpret(QString line) const;

private:
    using Command = void (Interpreter::*)(const IRCMessage& message) const;
    using Numeric = void (Numerics::*)(const IRCMessage& message) const;
    using Handler = std::variant<Command, Numeric>;
    struct Row
    {
        QLatin1StringView words; // lower case, blanks between
        Handler handler;
    };
    static const Row rows[];

    const Handler* handlerOf(QStringView word) const; // nullptr: it has none

    void welcome(const IRCMessage& message) const;
    void ping(const IRCMessage& message) const;
    void join(const IRCMessage& message) const;
    void privmsg(const IRCMessage& message) const;
    void privateMessage(const IRCMessage& message) const;
    void nick(const IRCMessage& message) const;
    void part(const IRCMessage& message) const;
    void mode(const IRCMessage& message) const;
    void quit(const IRCMessage& message) const;
    void kick(const IRCMessage& message) const;
    void ownKick(const IRCMessage& message, Room& room) const;
    void topic(const IRCMessage& message) const;
    void notice(const IRCMessage& message) const;
    void heedNicknameService(const QString& targetAndText) const;
    void kill(const IRCMessage& message) const;
    void ownKill(const IRCMessage& message) const;
    void anythingElse(const IRCMessage& message) const;

    void clearRoomOnScreen() const;

    SessionDesk m_desk;
    Numerics m_numerics;
    QHash<QString, const Handler*> m_byWord; // the same, for each word of it
    mutable QString m_lastWord;
    mutable const Handler* m_lastHandler = nullptr;
};
