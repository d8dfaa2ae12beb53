#include "text/Mentions.h"

#include "common/SessionVariables.h"
#include "common/TextHelpers.h"
#include "text/TextWriter.h"
#include "view/RichTextBox.h"

namespace {

constexpr int longestTitle = 60;
constexpr int longestBody = 200;
constexpr qint64 noticePauseMilliseconds = 2000; // a flood of lines is no flood of notices

// Brackets may enclose a nick, so a word ends at them though nicks may have some.
bool isPartOfWord(QChar c)
{
    return c.isLetterOrNumber() || c.isMark() || QStringView(u"_-|^`\\").contains(c);
}

bool isWordAt(QStringView text, qsizetype start, qsizetype length)
{
    const qsizetype end = start + length;
    return (start == 0 || !isPartOfWord(text[start - 1])) &&
           (end == text.size() || !isPartOfWord(text[end]));
}

// Where a text has another from a place on, whatever their case; -1 if nowhere. Every line of a
// burst is looked at, and the toolkit's own search first prepares for texts much longer than that.
qsizetype indexIn(QStringView text, QStringView wanted, qsizetype from)
{
    const QChar lower = wanted.front().toLower();
    const QChar upper = wanted.front().toUpper();
    for (qsizetype at = from; at + wanted.size() <= text.size(); ++at) {
        if ((text[at] == lower || text[at] == upper) &&
            text.sliced(at, wanted.size()).compare(wanted, Qt::CaseInsensitive) == 0)
            return at;
    }
    return -1;
}

} // namespace

bool namesNick(const QString& text, const QString& nick)
{
    if (nick.isEmpty() || indexIn(text, nick, 0) < 0) // most lines end here
        return false;
    const QString plain = TextWriter::plainText(text);
    for (qsizetype at = 0; (at = indexIn(plain, nick, at)) >= 0; ++at) {
        if (isWordAt(plain, at, nick.size()))
            return true;
    }
    return false;
}

Mentions::Mentions(Desk desk)
    : m_desk(std::move(desk))
{
}

void Mentions::roomLine(RichTextBox& view, const QString& nick, const QString& text)
{
    if (!mark(view, nick, text) || view.isLookedAt() || m_desk.isBlocked(nick))
        return;
    m_desk.attract();
    notify(nick, text);
}

void Mentions::privateLine(RichTextBox& view, const QString& nick, const QString& text)
{
    mark(view, nick, text);
    if (m_desk.notifies && !view.isLookedAt() && nick != ownNick() && !m_desk.isBlocked(nick))
        notify(nick, text);
}

// Before the server has said hello the nick still has the padding of the settings.
QString Mentions::ownNick() const
{
    return beforeNul(m_desk.variables.MyNick);
}

bool Mentions::mark(RichTextBox& view, const QString& nick, const QString& text) const
{
    const QString own = ownNick();
    if (nick == own || !namesNick(text, own))
        return false;
    view.markLastLine();
    return true;
}

void Mentions::notify(const QString& nick, const QString& text)
{
    if (!m_desk.notifies)
        return;
    if (m_sinceNotice.isValid() && m_sinceNotice.elapsed() < noticePauseMilliseconds)
        return;
    m_sinceNotice.start();
    m_desk.notify(TextWriter::plainText(nick).left(longestTitle),
                  TextWriter::plainText(text).left(longestBody));
}
