#include "wire/StandardLines.h"

#include "common/ControlCharacters.h"
#include "common/TextHelpers.h"
#include "wire/IRCMessage.h"
#include "wire/StandardForm.h"
#include "wire/TextPieces.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longestLine = 510; // in bytes, without its end
// What stands before a relayed line as long as nobody has told how others see us.
constexpr qsizetype longestUserAtHost = 10 + 1 + 63;
constexpr int answerMilliseconds = 20000;
constexpr qsizetype shortestPiece = 40; // behind a target that is too long for any line
constexpr qsizetype longestQueueOfAnswers = 3;
constexpr auto nicknameService = "NickServ"_L1;

bool isSame(QStringView one, QLatin1StringView other)
{
    return one.compare(other, Qt::CaseInsensitive) == 0;
}

QStringView commandOf(QStringView line)
{
    qsizetype from = 0;
    if (line.startsWith(u':')) {
        from = line.indexOf(u' ') + 1;
        if (from == 0)
            return {};
    }
    const qsizetype end = line.indexOf(u' ', from);
    return end < 0 ? line.mid(from) : line.mid(from, end - from);
}

bool hasWord(QLatin1StringView words, QStringView word)
{
    for (const QLatin1StringView candidate : words.tokenize(' '_L1)) {
        if (word.compare(candidate, Qt::CaseInsensitive) == 0)
            return true;
    }
    return false;
}

} // namespace

const StandardLines::Row StandardLines::rows[]{
    {"001"_L1, &StandardLines::welcome},
    {"005"_L1, &StandardLines::limits},
    {"303"_L1, &StandardLines::isonAnswer},
    {"396"_L1, &StandardLines::hostChange},
    {"431 432 433 436 437"_L1, &StandardLines::nickAnswer},
    {"JOIN NICK"_L1, &StandardLines::ownLine},
    {"NOTICE 401"_L1, &StandardLines::serviceAnswer},
};

StandardLines::StandardLines(const Ways& ways)
    : m_ways(ways)
    , m_pace(ways.write, ways.now)
    , m_sasl({[this](const QString& line) { write(line); }, ways.tell})
{
    m_answerTime.setSingleShot(true);
    m_answerTime.setInterval(answerMilliseconds);
    QObject::connect(&m_answerTime, &QTimer::timeout, this, [this] { noAnswer(); });
}

void StandardLines::begin(const SaslSignIn::Account& account, const Charset& charset)
{
    end();
    m_charset = charset;
    m_account = account;
    m_nick = account.nick;
    m_sasl.begin(account);
}

void StandardLines::end()
{
    m_pace.clear();
    m_answerTime.stop();
    m_userAtHost.clear();
    m_limits = {};
    m_isonQuestions.clear();
    m_askedOfService.clear();
    m_hasHeard = false;
    m_isWelcome = false;
}

void StandardLines::send(const QString& houseLine)
{
    const StandardLine line = standardForm(houseLine);
    if (line.command.isEmpty() || isAskedAlready(line))
        return;
    if (isSame(line.command, "PRIVMSG"_L1) || isSame(line.command, "NOTICE"_L1))
        return sendTalk(line);
    if (isSame(line.command, "ISON"_L1))
        return sendIson(line);
    if (isSame(line.command, "PONG"_L1))
        return m_pace.sendFirst(bytesOf(line.text()));
    if (isSame(line.command, "NICK"_L1)) {
        if (!line.last)
            return; // the box that asks for another one is up
        if (!m_isWelcome) {
            m_nick = *line.last;
            m_answerTime.start();
        }
    }
    sendCut(line);
    if (isSame(line.command, "QUIT"_L1))
        m_pace.flush();
}

// The session asks the nickname service once for each line of a greeting. Once is enough for it,
// and five wrong passwords end the session on some networks.
bool StandardLines::isAskedAlready(const StandardLine& line)
{
    if (!line.last || !line.last->startsWith("IDENTIFY "_L1) ||
        !isSame(line.middles.value(0), nicknameService))
        return false;
    if (m_sasl.succeeded() && line.last->mid(9) == m_account.password)
        return true;
    return std::exchange(m_askedOfService, *line.last) == *line.last;
}

void StandardLines::sendTalk(const StandardLine& line)
{
    if (!line.last)
        return write(line.text());
    const QString action = QString(strAction) + "ACTION "_L1;
    const QString& text = *line.last;
    const bool isAction = text.startsWith(action) && text.endsWith(strAction);
    if (!isAction && text.startsWith(strAction)) {
        // A flood of questions must not hold up what a person types.
        const bool isAnswer = isSame(line.command, "NOTICE"_L1);
        if (!isAnswer || m_pace.waiting() < longestQueueOfAnswers)
            sendCut(line); // half a question is none
        return;
    }
    const QString before = isAction ? action : QString();
    const QString behind = isAction ? QString(strAction) : QString();
    const QString inner = text.mid(before.size(), text.size() - before.size() - behind.size());
    const qsizetype room =
        std::max(longestLine - relayedHead(line) - before.size() - behind.size(), shortestPiece);
    StandardLine piece = line;
    for (const QString& part : piecesOf(inner, room, m_charset)) {
        piece.last = before + part + behind;
        write(piece.text());
    }
    if (inner.isEmpty())
        write(line.text());
}

void StandardLines::sendIson(const StandardLine& line)
{
    QStringList names = line.middles;
    if (line.last)
        names += line.last->split(u' ', Qt::SkipEmptyParts);
    QStringList parts;
    for (const QString& name : std::as_const(names)) {
        const QString longer = parts.isEmpty() ? QString() : QString(parts.last() + u' ' + name);
        if (longer.isEmpty() || m_charset.sizeOf(longer) > longestLine)
            parts += line.command + u' ' + name;
        else
            parts.last() = longer;
    }
    const int count = static_cast<int>(parts.size());
    if (count > 0)
        m_isonQuestions += {count, count, {}};
    for (const QString& part : std::as_const(parts))
        write(part);
}

void StandardLines::sendCut(StandardLine line)
{
    const qsizetype limit = limitOf(line);
    const QString text = line.last.value_or(QString());
    const qsizetype fits = line.last ? fittingLength(text, limit, m_charset) : 0;
    if (line.last && fits < text.size()) {
        line.last = text.left(fits);
        const QString left = text.mid(fits);
        if (!isSame(line.command, "USER"_L1)) {
            m_ways.tell("The server takes no more of this "_L1 + line.command +
                            ". Left off, and kept for the arrow keys: "_L1 + left,
                        false);
            m_ways.keep(left);
        }
    }
    write(line.text());
}

// The bytes that a text may have so that nobody cuts it.
qsizetype StandardLines::limitOf(const StandardLine& line) const
{
    const std::pair<QLatin1StringView, int> told[]{
        {"TOPIC"_L1, m_limits.topic}, {"AWAY"_L1, m_limits.away}, {"KICK"_L1, m_limits.kick}};
    qsizetype limit = longestLine - relayedHead(line);
    for (const auto& [word, bytes] : told) {
        if (isSame(line.command, word) && bytes > 0)
            limit = std::min<qsizetype>(limit, bytes);
    }
    return std::max<qsizetype>(limit, 1);
}

// All that stands before the text when the server passes the line on to others.
qsizetype StandardLines::relayedHead(const StandardLine& line) const
{
    StandardLine withColon = line;
    withColon.last = QString();
    const qsizetype source =
        m_userAtHost.isEmpty() ? longestUserAtHost : m_charset.sizeOf(m_userAtHost);
    return 1 + m_charset.sizeOf(m_nick) + 1 + source + 1 + m_charset.sizeOf(withColon.head());
}

void StandardLines::write(const QString& text)
{
    m_pace.send(bytesOf(text));
}

QByteArray StandardLines::bytesOf(const QString& text) const
{
    return m_charset.encode(text.left(fittingLength(text, longestLine, m_charset))) + "\r\n";
}

std::optional<QString> StandardLines::receive(const QString& line)
{
    const QStringView command = commandOf(line);
    if (command.isEmpty())
        return line;
    m_hasHeard = true;
    if (m_sasl.listens() && m_sasl.takes(ParseMessage(withoutCarriageReturns(line))))
        return {};
    for (const Row& row : rows) {
        if (hasWord(row.words, command))
            return (this->*row.handler)(ParseMessage(withoutCarriageReturns(line)), line);
    }
    return line;
}

std::optional<QString> StandardLines::welcome(const IRCMessage& message, const QString& line)
{
    m_isWelcome = true;
    m_answerTime.stop();
    m_pace.forgive();
    m_nick = GetParams(message, 1, 1); // it may be cut to what the server takes
    const QString lastWord = GetParams(message, 2, -1).section(u' ', -1);
    if (lastWord.startsWith(m_nick + u'!') && lastWord.contains(u'@'))
        m_userAtHost = TextAfter(lastWord, u'!');
    return line;
}

std::optional<QString> StandardLines::limits(const IRCMessage& message, const QString& line)
{
    const std::pair<QLatin1StringView, int*> wanted[]{{"TOPICLEN"_L1, &m_limits.topic},
                                                      {"AWAYLEN"_L1, &m_limits.away},
                                                      {"KICKLEN"_L1, &m_limits.kick}};
    for (const QStringView token : message.Params) {
        for (const auto& [name, limit] : wanted) {
            if (token.startsWith(name) && token.mid(name.size()).startsWith(u'='))
                *limit = std::max(token.mid(name.size() + 1).toInt(), 0);
        }
    }
    return line;
}

std::optional<QString> StandardLines::isonAnswer(const IRCMessage& message, const QString& line)
{
    if (m_isonQuestions.isEmpty())
        return line;
    IsonQuestion& question = m_isonQuestions.first();
    question.names += GetParams(message, 2, -1).split(u' ', Qt::SkipEmptyParts);
    if (--question.open > 0)
        return {};
    const IsonQuestion answered = m_isonQuestions.takeFirst();
    if (answered.parts == 1)
        return line;
    return u':' + message.Prefix + " 303 "_L1 + GetParams(message, 1, 1) + " :"_L1 +
           answered.names.join(u' ');
}

std::optional<QString> StandardLines::nickAnswer(const IRCMessage&, const QString& line)
{
    m_answerTime.stop();
    return line;
}

std::optional<QString> StandardLines::hostChange(const IRCMessage& message, const QString& line)
{
    const QString host = GetParams(message, 2, 2);
    if (host.contains(u'@'))
        m_userAtHost = host;
    else if (!m_userAtHost.isEmpty())
        m_userAtHost = TextBefore(m_userAtHost, u'@') + u'@' + host;
    return line;
}

std::optional<QString> StandardLines::ownLine(const IRCMessage& message, const QString& line)
{
    if (message.Nick.compare(m_nick, Qt::CaseInsensitive) != 0)
        return line;
    m_userAtHost = message.Ident + u'@' + message.Host;
    if (isSame(message.Command, "NICK"_L1))
        m_nick = GetParams(message, 1, 1);
    return line;
}

std::optional<QString> StandardLines::serviceAnswer(const IRCMessage& message, const QString& line)
{
    const bool isMissing = message.Command == "401"_L1;
    if (isSame(isMissing ? GetParams(message, 2, 2) : message.Nick, nicknameService))
        m_askedOfService.clear();
    return line;
}

void StandardLines::noAnswer()
{
    m_ways.warn("The server has not answered to the nick \""_L1 + m_nick + "\" for "_L1 +
                QString::number(m_answerTime.interval() / 1000) +
                " seconds. If it never does, sign out and try another nick."_L1);
}
