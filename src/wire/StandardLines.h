#pragma once

#include "wire/Charset.h"
#include "wire/Pace.h"
#include "wire/SaslSignIn.h"

#include <QObject>

#include <optional>

struct IRCMessage;
struct StandardLine;

// Stands between the way out and the socket of a network of today. The session above says and
// hears what it does on the house's own network: what goes out gets today's form, length and pace
// here, and what comes in gets the form that the session knows.
class StandardLines final : public QObject
{
public:
    struct Ways
    {
        Pace::Write write; // to the socket
        Pace::Now now;
        // A sentence for the view; a good one or one about something that went wrong.
        std::function<void(const QString& text, bool good)> tell;
        std::function<void(const QString& text)> warn; // where it is seen with no room open
        std::function<void(const QString& text)> keep; // typed text that no line could take
    };

    explicit StandardLines(const Ways& ways);

    // The connection stands. Without a password in the account no sign-in to it is tried.
    void begin(const SaslSignIn::Account& account, const Charset& charset);
    // The connection is over: nothing of it waits or is told any more.
    void end();

    void send(const QString& houseLine);
    // What the session is to handle; nothing of a line that is none of its business.
    std::optional<QString> receive(const QString& line);
    // Whether the server has said anything, so that it is a chat server at all.
    bool hasHeard() const { return m_hasHeard; }

    void turn() { m_pace.sendWhatMay(); } // its timer does it in life
    void setAnswerTime(int milliseconds) { m_answerTime.setInterval(milliseconds); }

private:
    using Handler = std::optional<QString> (StandardLines::*)(const IRCMessage& message,
                                                              const QString& line);
    struct Row
    {
        QLatin1StringView words;
        Handler handler;
    };
    static const Row rows[];

    std::optional<QString> welcome(const IRCMessage& message, const QString& line);
    std::optional<QString> limits(const IRCMessage& message, const QString& line);
    std::optional<QString> isonAnswer(const IRCMessage& message, const QString& line);
    std::optional<QString> nickAnswer(const IRCMessage& message, const QString& line);
    std::optional<QString> hostChange(const IRCMessage& message, const QString& line);
    std::optional<QString> ownLine(const IRCMessage& message, const QString& line);
    std::optional<QString> serviceAnswer(const IRCMessage& message, const QString& line);

    void sendTalk(const StandardLine& line);
    void sendIson(const StandardLine& line);
    void sendCut(StandardLine line);
    bool isAskedAlready(const StandardLine& line);
    void write(const QString& text);
    QByteArray bytesOf(const QString& text) const;
    qsizetype relayedHead(const StandardLine& line) const;
    qsizetype limitOf(const StandardLine& line) const;
    void noAnswer();

    // One question about nicks that went out in parts.
    struct IsonQuestion
    {
        int parts = 0;
        int open = 0; // without an answer yet
        QStringList names;
    };
    struct TextLimits // in bytes; 0 as long as the server has not told it
    {
        int topic = 0;
        int away = 0;
        int kick = 0;
    };

    Ways m_ways;
    Pace m_pace;
    SaslSignIn m_sasl;
    Charset m_charset;
    SaslSignIn::Account m_account;
    QString m_nick;
    QString m_userAtHost; // as others see us; empty before anything has told it
    TextLimits m_limits;
    QList<IsonQuestion> m_isonQuestions;
    QString m_askedOfService; // the sign-in that has no answer yet
    bool m_hasHeard = false;
    QTimer m_answerTime; // runs from NICK to the answer to it, before the welcome alone
    bool m_isWelcome = false;
};
