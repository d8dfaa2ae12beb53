#include "wire/IRCMessage.h"

namespace {

constexpr QChar blank{u' '};
constexpr QChar carriageReturn{u'\r'};

struct Halves
{
    QStringView left; // both are all of it when the separator does not occur
    QStringView right;
};

Halves splitAt(QStringView text, QChar separator)
{
    const qsizetype position = text.indexOf(separator);
    if (position < 0)
        return {text, text};
    return {text.first(position), text.sliced(position + 1)};
}

void parsePrefix(IRCMessage& message, QStringView& rest)
{
    const Halves line = splitAt(rest.sliced(1), blank);
    message.Prefix = message.Host = line.left;
    rest = line.right;
    if (!message.Prefix.contains(u'!'))
        return;
    const Halves nickAndHost = splitAt(message.Prefix, u'!');
    const Halves identAndHost = splitAt(nickAndHost.right, u'@');
    message.Nick = nickAndHost.left.toString();
    message.Ident = identAndHost.left;
    message.Host = identAndHost.right;
}

} // namespace

IRCMessage ParseMessage(const QString& line)
{
    IRCMessage message;
    message.Line = line;
    QStringView rest(message.Line);
    if (rest.startsWith(u':'))
        parsePrefix(message, rest);
    if (!rest.contains(blank)) {
        message.Command = rest;
        return message;
    }
    const Halves commandAndRest = splitAt(rest, blank);
    message.Command = commandAndRest.left;
    message.ParamText = commandAndRest.right;

    rest = message.ParamText;
    while (true) {
        if (rest.startsWith(u':')) {
            message.Params.append(rest.sliced(1));
            return message;
        }
        const Halves wordAndRest = splitAt(rest, blank);
        message.Params.append(wordAndRest.left);
        if (wordAndRest.left.size() == rest.size())
            return message;
        rest = wordAndRest.right;
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

QString IRCMessage::asItCame(int index) const
{
    return index < 1 || index > Params.size() ? QString() : Params[index - 1].toString();
}

QString GetParams(const IRCMessage& message, int from, int to)
{
    const qsizetype count = message.Params.size();
    const qsizetype last = to == -1 ? count : to;
    if (from < 1 || last > count || from > last)
        return {};
    qsizetype size = last - from;
    for (qsizetype i = from; i <= last; ++i)
        size += message.Params[i - 1].size();
    QString text;
    text.reserve(size);
    for (qsizetype i = from; i <= last; ++i) {
        if (i > from)
            text += blank;
        text += message.Params[i - 1];
    }
    if (text.contains(carriageReturn))
        text.remove(carriageReturn);
    return text;
}
