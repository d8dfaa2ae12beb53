#pragma once

#include <QString>

class IncomingText;
class LineSink;
class MainView;
class QueryTable;

// Client-to-client requests in private messages. VERSION and PING are answered by NOTICE, with
// fixed texts; ACTION is shown.
class Ctcp final
{
public:
    struct Parts
    {
        const MainView& mainView;
        const IncomingText& roomText;
        LineSink& server;
        const QueryTable& queries;
    };

    explicit Ctcp(const Parts& parts)
        : m_parts(parts)
    {
    }

    // The text comes with its delimiters; its last character goes unseen.
    void HandleCTCP(const QString& nick, const QString& text) const;

private:
    void CTCPReply(const QString& nick, const QString& text) const;
    void answerVersion(const QString& nick, const QString& rest) const;
    void answerPing(const QString& nick, const QString& rest) const;
    void showAction(const QString& nick, const QString& rest) const;

    Parts m_parts;
};
