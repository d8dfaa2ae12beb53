#include "wire/IRCMessage.h"

#include "common/TextHelpers.h"

namespace {

constexpr QChar blank{u' '};

void parsePrefix(IRCMessage& message, QString& rest)
{
    SplitAt(rest.mid(1), blank, message.Host, rest);
    message.Prefix = message.Host;
    if (!message.Host.contains(u'!'))
        return;
    SplitAt(message.Host, u'!', message.Nick, message.Host);
    SplitAt(message.Host, u'@', message.Ident, message.Host);
}

} // namespace

IRCMessage ParseMessage(const QString& line)
{
    IRCMessage message;
    QString rest = line;
    if (rest.startsWith(u':'))
        parsePrefix(message, rest);
    if (!rest.contains(blank)) {
        message.Command = rest;
        return message;
    }
    SplitAt(rest, blank, message.Command, message.ParamText);

    qsizetype from = 0;
    const QString& text = message.ParamText;
    while (true) {
        if (from < text.size() && text[from] == u':') {
            message.Params.append(text.mid(from + 1));
            return message;
        }
        const qsizetype next = text.indexOf(blank, from);
        if (next < 0) {
            message.Params.append(text.mid(from));
            return message;
        }
        message.Params.append(text.mid(from, next - from));
        from = next + 1;
    }
}

QString IRCMessage::word(int index) const
{
    return GetParams(*this, index, index);
}

QString IRCMessage::from(int index) const
{
    return GetParams(*this, index, -1);
}

QString GetParams(const IRCMessage& message, int from, int to)
{
    return GetWords(message.Params, from, to);
}
