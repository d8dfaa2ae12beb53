#include "view/SpokenText.h"

#include <algorithm>

SpokenText::SpokenText(const ChatText& text, const AttributeTables& tables)
    : m_text(text)
    , m_tables(tables)
{
}

void SpokenText::textChanged(const ChatText::Change& change)
{
    if (change.line >= m_linesRead)
        return;
    m_linesRead = change.line;
    const qsizetype start = m_text.lineStart(change.line);
    std::erase_if(m_pictures, [&](const Picture& picture) { return picture.position >= start; });
}

qsizetype SpokenText::length() const
{
    return offsetOf(m_text.length());
}

qsizetype SpokenText::offsetOf(qsizetype position) const
{
    readUpTo(m_text.lineAt(position));
    const auto next =
        std::lower_bound(m_pictures.begin(), m_pictures.end(), position,
                         [](const Picture& one, qsizetype value) { return one.position < value; });
    if (next == m_pictures.begin())
        return position;
    const Picture& before = *std::prev(next);
    return before.offset + before.code.size() + (position - before.position - 1);
}

qsizetype SpokenText::positionOf(qsizetype offset) const
{
    readUpTo(m_text.lineCount() - 1);
    const auto next =
        std::upper_bound(m_pictures.begin(), m_pictures.end(), offset,
                         [](qsizetype value, const Picture& one) { return value < one.offset; });
    if (next == m_pictures.begin())
        return offset;
    const Picture& before = *std::prev(next);
    const qsizetype behind = offset - before.offset - before.code.size();
    return behind < 0 ? before.position : before.position + 1 + behind;
}

QString SpokenText::text(qsizetype fromOffset, qsizetype toOffset) const
{
    const qsizetype from = positionOf(fromOffset);
    const qsizetype to = std::max(positionOf(toOffset), from);
    const bool endsInCode = offsetOf(to) < toOffset;
    QString spoken = m_text.text(from, std::min(to + (endsInCode ? 1 : 0), m_text.length()));
    const auto first =
        std::lower_bound(m_pictures.begin(), m_pictures.end(), from,
                         [](const Picture& one, qsizetype value) { return one.position < value; });
    const auto beyond =
        std::lower_bound(first, m_pictures.end(), from + spoken.size(),
                         [](const Picture& one, qsizetype value) { return one.position < value; });
    for (auto picture = beyond; picture != first;) {
        --picture;
        spoken.replace(picture->position - from, 1, picture->code);
    }
    return spoken.mid(fromOffset - offsetOf(from), toOffset - fromOffset);
}

void SpokenText::readUpTo(qsizetype line) const
{
    for (; m_linesRead <= line; ++m_linesRead) {
        const qsizetype start = m_text.lineStart(m_linesRead);
        const ChatText::Line read = m_text.line(m_linesRead);
        for (size_t i = 0; i < read.runs.size(); ++i) {
            const ChatText::Attributes attributes = read.runs[i].attributes;
            if (attributes.picture == 0)
                continue;
            const QString& code = m_tables.pictures.at(attributes.picture - 1).code;
            for (int column = read.runs[i].start; column < read.runEnd(i); ++column) {
                const qsizetype position = start + column;
                const qsizetype offset =
                    m_pictures.empty() ? position
                                       : m_pictures.back().offset + m_pictures.back().code.size() +
                                             (position - m_pictures.back().position - 1);
                m_pictures.push_back({position, offset, code});
            }
        }
    }
}
