#include "room/NickCompletion.h"

#include "controls/ListBox.h"
#include "view/RichTextBox.h"

#include <QSet>

#include <algorithm>

namespace {

using namespace Qt::StringLiterals;

constexpr qsizetype textLookedAt = 20000; // characters at the end of the conversation
constexpr auto atLineStart = ": "_L1;

QString withoutRank(const QString& row)
{
    qsizetype signs = 0;
    while (signs < row.size() && u"~&@%+"_s.contains(row[signs]))
        ++signs;
    return row.mid(signs);
}

// Whose line it is: "<name> ..." when something is said, "name ..." when something is done.
QString speakerOf(QStringView line)
{
    if (line.startsWith(u'<'))
        return line.mid(1, line.indexOf(u'>') - 1).toString();
    const qsizetype blank = line.indexOf(u' ');
    return (blank < 0 ? line : line.first(blank)).toString();
}

} // namespace

NickCompletion::NickCompletion(Names names)
    : m_names(std::move(names))
{
}

std::optional<NickCompletion::Line> NickCompletion::complete(const Line& line, Direction direction)
{
    const bool goesOn = !m_fitting.isEmpty() && line == m_answer;
    if (!goesOn && !startAt(line))
        return {};
    const qsizetype count = m_fitting.size();
    if (goesOn)
        m_chosen = (m_chosen + (direction == Direction::Next ? 1 : count - 1)) % count;
    else
        m_chosen = direction == Direction::Next ? 0 : count - 1;

    QStringView rest = QStringView(m_before.text).mid(m_before.caret);
    QString word = m_fitting[m_chosen] + (m_wordStart == 0 ? QString(atLineStart) : u" "_s);
    if (rest.startsWith(u' '))
        rest = rest.mid(1); // the blank behind the name stands there already
    m_answer.text = m_before.text.first(m_wordStart) + word + rest;
    m_answer.caret = m_wordStart + word.size();
    return m_answer;
}

bool NickCompletion::startAt(const Line& line)
{
    m_before = line;
    m_wordStart = line.caret;
    while (m_wordStart > 0 && !line.text[m_wordStart - 1].isSpace())
        --m_wordStart;
    const QStringView word = QStringView(line.text).sliced(m_wordStart, line.caret - m_wordStart);
    m_fitting.clear();
    if (word.isEmpty())
        return false;
    for (const QString& name : m_names()) {
        if (name.startsWith(word, Qt::CaseInsensitive) &&
            !m_fitting.contains(name, Qt::CaseInsensitive))
            m_fitting += name;
    }
    return !m_fitting.isEmpty();
}

QStringList namesByLastSpeaker(const RichTextBox& conversation, const ListBox& chatters)
{
    QStringList names;
    for (int row = 0; row < chatters.ListCount(); ++row)
        names += withoutRank(chatters.List(row));
    names.removeAll(QString());

    const qsizetype from = std::max<qsizetype>(conversation.TextLength() - textLookedAt, 0);
    const QString text = conversation.TextRange(from, textLookedAt);
    const QSet<QString> present(names.cbegin(), names.cend());
    QStringList ordered;
    QSet<QString> taken;
    const auto take = [&](const QString& name) {
        if (!taken.contains(name)) {
            taken += name;
            ordered += name;
        }
    };
    const QList<QStringView> lines = QStringView(text).split(u"\r\n"_s);
    for (auto line = lines.rbegin(); line != lines.rend(); ++line) {
        if (const QString name = speakerOf(*line); present.contains(name))
            take(name);
    }
    for (const QString& name : names)
        take(name);
    return ordered;
}
