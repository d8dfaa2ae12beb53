#include "wire/StandardForm.h"

#include "common/ControlCharacters.h"
#include "common/TextHelpers.h"

#include <algorithm>

namespace {

using namespace Qt::StringLiterals;

constexpr QChar blank{u' '};
constexpr qsizetype longestIdent = 8;
constexpr auto identWithoutLetters = "quill"_L1;

// A colon before the last parameter is the line's, or the first character of what was typed.
enum class Colon { OfTheLine, Typed };

struct Command
{
    QLatin1StringView word;
    int middles; // parameters before the last one
    Colon colon = Colon::OfTheLine;
};

constexpr Command commands[]{
    {"PRIVMSG"_L1, 1}, {"NOTICE"_L1, 1}, {"JOIN"_L1, 1},    {"PART"_L1, 1},
    {"TOPIC"_L1, 1},   {"KICK"_L1, 2},   {"KILL"_L1, 1},    {"INVITE"_L1, 1},
    {"NICK"_L1, 0},    {"QUIT"_L1, 0},   {"PONG"_L1, 0},    {"PING"_L1, 0},
    {"OPER"_L1, 1},    {"PASS"_L1, 0},   {"WALLOPS"_L1, 0}, {"AWAY"_L1, 0, Colon::Typed},
};

// Words to the services that only some servers pass on.
struct ServiceWord
{
    QLatin1StringView word;
    QLatin1StringView service;
    QLatin1StringView said; // in place of the word; the rest follows
    Colon colon = Colon::OfTheLine;
};

constexpr ServiceWord serviceWords[]{
    {"IDENTIFY"_L1, "NickServ"_L1, "IDENTIFY "_L1, Colon::Typed},
    {"ID"_L1, "NickServ"_L1, "IDENTIFY "_L1, Colon::Typed},
    {"GHOST"_L1, "NickServ"_L1, "GHOST "_L1},
    {"RECOVER"_L1, "NickServ"_L1, "RECOVER "_L1},
    {"RELEASE"_L1, "NickServ"_L1, "RELEASE "_L1},
    {"NICKSERV"_L1, "NickServ"_L1, ""_L1},
    {"NS"_L1, "NickServ"_L1, ""_L1},
    {"CHANSERV"_L1, "ChanServ"_L1, ""_L1},
    {"CS"_L1, "ChanServ"_L1, ""_L1},
    {"MEMOSERV"_L1, "MemoServ"_L1, ""_L1},
    {"MS"_L1, "MemoServ"_L1, ""_L1},
};

template<typename Table>
auto rowOf(const Table& table, const QString& word)
{
    const auto* row = std::ranges::find_if(table, [&](const auto& candidate) {
        return word.compare(candidate.word, Qt::CaseInsensitive) == 0;
    });
    return row == std::end(table) ? nullptr : row;
}

// A parameter more behind those there are; all that is left when the line ends it with a colon.
bool takeMiddle(QString& rest, StandardLine& line)
{
    while (rest.startsWith(blank))
        rest.remove(0, 1);
    if (rest.isEmpty() || rest.startsWith(u':'))
        return false;
    line.middles += TextBefore(rest, blank);
    rest = rest.contains(blank) ? TextAfter(rest, blank) : QString();
    return true;
}

QString withoutColon(const QString& text, Colon colon)
{
    return colon == Colon::OfTheLine && text.startsWith(u':') ? text.mid(1) : text;
}

StandardLine inParts(const QString& word, QString rest)
{
    StandardLine line{word, {}, {}};
    const Command* command = rowOf(commands, word);
    const bool isKnown = command != nullptr;
    for (int i = 0; !isKnown || i < command->middles; ++i) {
        if (!takeMiddle(rest, line))
            break;
    }
    if (!rest.isEmpty())
        line.last = withoutColon(rest, isKnown ? command->colon : Colon::OfTheLine);
    return line;
}

// "name:Full Name" of the house. An ident that holds anything but letters and digits is refused by
// one server or the other.
StandardLine user(const QString& rest)
{
    QString ident;
    for (const QChar c : TextBefore(rest, u':')) {
        const bool isAscii = c.unicode() < 0x80;
        if (isAscii && (c.isLetter() || (c.isDigit() && !ident.isEmpty())))
            ident += c;
    }
    if (ident.isEmpty())
        ident = identWithoutLetters;
    return {u"USER"_s, {ident.left(longestIdent), u"0"_s, u"*"_s}, TextAfter(rest, u':')};
}

StandardLine toService(const ServiceWord& row, const QString& rest)
{
    return {
        u"PRIVMSG"_s, {row.service}, QString(row.said + withoutColon(rest, row.colon)).trimmed()};
}

// "nick WORD :text" is the answer to a question in control characters.
StandardLine ctcpReply(QString rest)
{
    StandardLine line{u"NOTICE"_s, {}, {}};
    takeMiddle(rest, line);
    StandardLine answer = inParts(TextBefore(rest, blank), TextAfter(rest, blank));
    QString text = answer.command + blank + answer.middles.join(blank);
    if (answer.last)
        text += (answer.middles.isEmpty() ? QString() : QString(blank)) + *answer.last;
    line.last = strAction + text + strAction;
    return line;
}

bool needsColon(const QString& text)
{
    return text.isEmpty() || text.startsWith(u':') || text.contains(blank);
}

} // namespace

QString StandardLine::head() const
{
    QString head = command;
    for (const QString& middle : middles)
        head += blank + middle;
    if (last)
        head += needsColon(*last) ? " :"_L1 : " "_L1;
    return head;
}

StandardLine standardForm(const QString& houseLine)
{
    QString line = beforeNul(houseLine);
    line.replace(u'\r', blank).replace(u'\n', blank);
    const QString word = TextBefore(line, blank);
    const QString rest = line.mid(word.size() + 1);
    if (word == "USER"_L1)
        return user(rest);
    if (word.compare("CTCPREPLY"_L1, Qt::CaseInsensitive) == 0)
        return ctcpReply(rest);
    if (const ServiceWord* row = rowOf(serviceWords, word))
        return toService(*row, rest);
    return inParts(word, rest);
}
