#pragma once

#include "commands/Identifiers.h"

#include <QString>
#include <QStringList>

class ChannelTable;
class ContactList;
class EventLoop;
class QueryTable;
class RichTextBox;
class ServerLink;
class StatusLine;
class TextWriter;
struct SessionVariables;

// The command language of the menus and forms. It does not send: it gives the line that a command
// text stands for, and the caller sends it.
class CommandProcessor final
{
public:
    struct Parts
    {
        SessionVariables& variables;
        const Identifiers& identifiers;
        const ServerLink& server;
        const ChannelTable& channels;
        QueryTable& queries;
        ContactList& buddies;
        const StatusLine& status;
        const TextWriter& writer;
        EventLoop& events;
    };

    explicit CommandProcessor(const Parts& parts)
        : m_parts(parts)
    {
    }

    // The text comes without its slash. Empty: there is nothing for the server. A failure costs
    // the statement that it happens in, never the line; only list raises.
    QString ProcessInput(const QString& target, const QString& text);

private:
    // A command with its arguments. Words are one-based; ranges beyond them are empty.
    struct Call
    {
        QString target;
        QString command;
        QString rest;
        QStringList words;

        QString word(int index) const;
        QString from(int index) const;
    };
    using Handler = QString (CommandProcessor::*)(const Call& call);
    struct Row
    {
        QLatin1StringView command;
        Handler handler;
    };

    static Handler handlerOf(const QString& command);
    RichTextBox* viewOf(const QString& target) const;
    QStringList expand(const QString& target, const QString& rest) const;

    QString query(const Call& call);
    QString msg(const Call& call);
    QString me(const Call& call);
    QString quit(const Call& call);
    QString notice(const Call& call);
    QString raw(const Call& call);
    QString nick(const Call& call);
    QString sv(const Call& call);
    QString id(const Call& call);
    QString part(const Call& call);
    QString userCount(const Call& call);
    QString bl(const Call& call);
    QString kill(const Call& call);
    QString es(const Call& call);
    QString list(const Call& call);
    QString anythingElse(const Call& call);

    Parts m_parts;
    QString m_versionReply; // what sv sets; the replies are fixed texts all the same
};
