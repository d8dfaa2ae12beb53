#include "view/LineNotes.h"

#include <algorithm>

LineNotes::LineNotes(Now now)
    : m_now(std::move(now))
{
}

void LineNotes::textChanged(const ChatText::Change& change, qsizetype lineCount)
{
    if (change.addedLines == 0 && change.removedLines == 0)
        return;
    if (change.line < m_whole)
        edited(change);
    m_whole = lineCount - 1;
    if (change.line + change.addedLines == m_whole)
        m_times.came(change.line, m_now());
}

void LineNotes::markLast()
{
    if (m_whole > 0 && !isMarked(m_whole - 1))
        m_marked.push_back(m_whole - 1);
}

bool LineNotes::isMarked(qsizetype line) const
{
    return std::binary_search(m_marked.begin(), m_marked.end(), line);
}

void LineNotes::edited(const ChatText::Change& change)
{
    m_times.edited(change);
    const qsizetype end = change.line + change.removedLines;
    std::erase_if(m_marked, [&](qsizetype line) { return line >= change.line && line < end; });
    for (qsizetype& line : m_marked)
        line = change.movedLine(line);
    if (m_readTo >= 0)
        m_readTo = change.movedLine(m_readTo);
}
