#include "commands/CommandProcessor.h"

#include "common/ControlCharacters.h"
#include "common/SessionVariables.h"
#include "common/TextHelpers.h"
#include "contacts/ContactList.h"
#include "platform/EventLoop.h"
#include "platform/Handlers.h"
#include "room/ChannelTable.h"
#include "talk/QueryTable.h"
#include "text/StatusLine.h"
#include "text/TextWriter.h"
#include "view/RichTextBox.h"
#include "wire/LineSink.h"
#include "wire/Winsock.h"

#include <optional>

using namespace Qt::StringLiterals;

QString CommandProcessor::Call::word(int index) const
{
    return GetWords(words, index, index);
}

QString CommandProcessor::Call::from(int index) const
{
    return GetWords(words, index, -1);
}

QString CommandProcessor::ProcessInput(const QString& target, const QString& text)
{
    Call call;
    call.target = target;
    SplitAt(text, u' ', call.command, call.rest); // a command alone is its own rest
    m_parts.events.DoEvents();
    call.words = expand(call.target, call.rest); // the caller's target may have changed meanwhile
    m_parts.events.DoEvents();
    return (this->*handlerOf(call.command.toLower()))(call);
}

CommandProcessor::Handler CommandProcessor::handlerOf(const QString& command)
{
    static constexpr Row rows[]{
        {"query"_L1, &CommandProcessor::query},
        {"msg"_L1, &CommandProcessor::msg},
        {"me"_L1, &CommandProcessor::me},
        {"quit"_L1, &CommandProcessor::quit},
        {"notice"_L1, &CommandProcessor::notice},
        {"raw"_L1, &CommandProcessor::raw},
        {"nick"_L1, &CommandProcessor::nick},
        {"sv"_L1, &CommandProcessor::sv},
        {"id"_L1, &CommandProcessor::id},
        {"part"_L1, &CommandProcessor::part},
        {"usercount"_L1, &CommandProcessor::userCount},
        {"users"_L1, &CommandProcessor::userCount},
        {"unum"_L1, &CommandProcessor::userCount},
        {"ucount"_L1, &CommandProcessor::userCount},
        {"chancount"_L1, &CommandProcessor::userCount},
        {"bl"_L1, &CommandProcessor::bl},
        {"kill"_L1, &CommandProcessor::kill},
        {"es"_L1, &CommandProcessor::es},
        {"list"_L1, &CommandProcessor::list},
    };
    for (const Row& row : rows) {
        if (command == row.command)
            return row.handler;
    }
    return &CommandProcessor::anythingElse;
}

QStringList CommandProcessor::expand(const QString& target, const QString& rest) const
{
    QString output;
    for (const QString& word : rest.split(u' ')) {
        if (word == "$+"_L1) {
            output.chop(1); // the blank of the word before: what follows joins it
            continue;
        }
        output +=
            word.startsWith(u'$') ? m_parts.identifiers.Identifier(target, CutLeft(word, 1)) : word;
        output += u' ';
    }
    output.chop(1);
    return output.split(u' ');
}

QString CommandProcessor::query(const Call& call)
{
    const QString nick = call.word(1);
    const QString text = call.from(2);
    const auto putInto = [&](int slot) {
        skipRest([&] { m_parts.queries.Queries(slot).PutText(m_parts.variables.MyNick, text); });
    };
    // Nothing is shown to a blocked nick and nothing is sent: the question itself fails.
    std::optional<bool> isOpen;
    skipRest([&] { isOpen = m_parts.queries.QueryVisible(nick); });
    if (!isOpen)
        return {};
    if (*isOpen) {
        putInto(m_parts.queries.FindQuery(nick));
        return "PRIVMSG <"_L1 + nick + "> "_L1 + text;
    }
    int slot = 0;
    skipRest([&] { slot = m_parts.queries.OpenQuery(nick, {}); });
    if (call.words.size() < 2)
        return {};
    putInto(slot);
    return "PRIVMSG < >"_L1 + text; // the place of the nick stays empty
}

QString CommandProcessor::msg(const Call& call)
{
    return "PRIVMSG "_L1 + call.word(1) + " :"_L1 + call.from(2);
}

QString CommandProcessor::me(const Call& call)
{
    bool isUnknown = false;
    skipRest([&] {
        RichTextBox* view = viewOf(call.target);
        isUnknown = !view;
        if (view)
            m_parts.writer.WriteView(*view, strColor % "06"_L1 % m_parts.variables.MyNick % u' ' %
                                                call.from(1));
    });
    if (isUnknown)
        return {};
    return "PRIVMSG "_L1 % call.target % " :"_L1 % strAction % "ACTION "_L1 % call.from(1) %
           strAction;
}

// None for a target that is not known.
RichTextBox* CommandProcessor::viewOf(const QString& target) const
{
    if (target.startsWith(u'#')) {
        const Room* room = m_parts.channels.entered(target);
        return room ? &room->form.DataIn() : nullptr;
    }
    PrivateWindow* window = m_parts.queries.windowOf(target);
    return window ? &window->DataIn() : nullptr;
}

QString CommandProcessor::quit(const Call& call)
{
    return "QUIT :"_L1 + call.from(1);
}

QString CommandProcessor::notice(const Call& call)
{
    return "NOTICE "_L1 + call.word(1) + " :"_L1 + call.from(2);
}

QString CommandProcessor::raw(const Call& call)
{
    return call.from(1);
}

QString CommandProcessor::nick(const Call& call)
{
    if (m_parts.server.sockState() != Winsock::Closed)
        return "NICK "_L1 + call.word(1);
    m_parts.variables.MyNick = call.word(1);
    return {};
}

QString CommandProcessor::sv(const Call& call)
{
    m_versionReply = call.from(1);
    skipRest([&] {
        m_parts.status.WriteStatus("Version Reply changed to '"_L1 + m_versionReply + u'\'', 6);
    });
    return {};
}

QString CommandProcessor::id(const Call& call)
{
    return "PRIVMSG NickServ :IDENTIFY "_L1 + call.word(1);
}

QString CommandProcessor::part(const Call& call)
{
    const bool named = call.words.size() > 1;
    const QString channel = named ? call.word(1) : call.target;
    // A room that is not known does not keep the line from going out.
    skipRest([&] {
        m_parts.channels.Channels(m_parts.channels.FindChannel(channel)).Tag = u"PARTNOW"_s;
    });
    return named ? QString("PART "_L1 + channel + " :"_L1 + call.from(2))
                 : QString("PART "_L1 + call.target);
}

QString CommandProcessor::userCount(const Call& call)
{
    const Room* room = m_parts.channels.entered(call.target);
    return QString::number(room ? room->nicks.ChatterCount() : 0);
}

QString CommandProcessor::bl(const Call&)
{
    skipRest([&] {
        if (m_parts.buddies.Visible())
            m_parts.buddies.Unload();
        else
            m_parts.buddies.Load();
    });
    return {};
}

QString CommandProcessor::kill(const Call& call)
{
    return "KILL "_L1 + call.word(1) + " :"_L1 + call.from(2);
}

QString CommandProcessor::es(const Call& call)
{
    skipRest([&] { TextWriter::WriteRaw(m_parts.channels.main().form.DataIn(), call.from(1)); });
    return {};
}

QString CommandProcessor::list(const Call&)
{
    // It would first clear the rows of a form with the server's rooms, and there is no such form.
    throw RunTimeError(RunTimeError::Number::ObjectVariableNotSet);
}

QString CommandProcessor::anythingElse(const Call& call)
{
    return call.command + u' ' + call.from(1);
}
