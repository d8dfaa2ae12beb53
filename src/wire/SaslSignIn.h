#pragma once

#include "wire/IRCMessage.h"

#include <QStringList>

#include <functional>

// Signs in to an account while the connection registers, by the mechanism PLAIN. The server is
// asked together with NICK and USER and not waited for: one that never answers welcomes at once.
class SaslSignIn final
{
public:
    struct Account
    {
        QString nick;
        QString password; // none: nothing is asked
    };
    struct Ways
    {
        std::function<void(const QString& line)> send;
        std::function<void(const QString& text, bool success)> tell;
    };

    explicit SaslSignIn(Ways ways)
        : m_ways(std::move(ways))
    {
    }

    void begin(const Account& account);
    bool listens() const { return m_state != State::Idle; }
    // Whether the line was one of this conversation, which nobody else is to see.
    bool takes(const IRCMessage& message);
    bool succeeded() const { return m_state == State::Succeeded; }

private:
    enum class State { Idle, Listing, Asked, Authenticating, Succeeded };

    void capabilities(const IRCMessage& message);
    void authenticate() const;
    bool outcome(const IRCMessage& message);
    void end(State state, const QString& told);

    Ways m_ways;
    Account m_account;
    State m_state = State::Idle;
    bool m_offered = false;
};
