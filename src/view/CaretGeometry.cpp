#include "view/CaretGeometry.h"

#include "view/ChatLayout.h"
#include "view/ChatScroll.h"
#include "view/ReaderSelection.h"

#include <algorithm>

CaretGeometry::CaretGeometry(const ChatText& text, ChatLayout& layout, ChatScroll& scroll)
    : m_text(text)
    , m_layout(layout)
    , m_scroll(scroll)
{
}

qsizetype CaretGeometry::positionAt(QPoint point) const
{
    const Place place = placeAt(point);
    const int column = m_layout.line(place.line).columnAt(place.point, LineLayout::Hit::Gap);
    return m_text.lineStart(place.line) + column;
}

qsizetype CaretGeometry::characterAt(QPoint point) const
{
    const Place place = placeAt(point);
    const int column = m_layout.line(place.line).columnAt(place.point, LineLayout::Hit::Character);
    return column < 0 ? -1 : m_text.lineStart(place.line) + column;
}

QRect CaretGeometry::caret(qsizetype position) const
{
    const qsizetype line = m_text.lineAt(position);
    const auto column = static_cast<int>(position - m_text.lineStart(line));
    return m_layout.line(line).caret(column).translated(0, m_scroll.top(line));
}

QRect CaretGeometry::character(qsizetype position) const
{
    const qsizetype line = m_text.lineAt(position);
    const auto column = static_cast<int>(position - m_text.lineStart(line));
    return m_layout.line(line).characterRect(column).translated(0, m_scroll.top(line));
}

bool CaretGeometry::isInSight(qsizetype position) const
{
    const qsizetype line = m_text.lineAt(position);
    if (line < m_scroll.firstLine() || line > m_scroll.lastLine())
        return false;
    const QRect place = caret(position);
    return place.top() >= 0 && place.bottom() < m_scroll.height();
}

void CaretGeometry::scrollTo(qsizetype position)
{
    if (isInSight(position))
        return;
    const qsizetype line = m_text.lineAt(position);
    const qsizetype reach = 1;
    if (line < m_scroll.firstLine() - reach || line > m_scroll.lastLine() + reach)
        m_scroll.centre(line);
    const QRect place = caret(position);
    if (place.top() < 0)
        m_scroll.scrollBy(place.top() - ChatScroll::margin);
    else if (place.bottom() >= m_scroll.height())
        m_scroll.scrollBy(place.bottom() + 1 + ChatScroll::margin - m_scroll.height());
}

qsizetype CaretGeometry::moved(qsizetype position, Motion motion)
{
    switch (motion) {
    case Motion::NextCharacter:
        return nextCharacter(m_text, position);
    case Motion::PreviousCharacter:
        return previousCharacter(m_text, position);
    case Motion::NextWord:
        return nextWord(m_text, position);
    case Motion::PreviousWord:
        return previousWord(m_text, position);
    case Motion::RowStart: {
        const qsizetype start = m_text.lineStart(m_text.lineAt(position));
        const LineLayout& line = m_layout.line(m_text.lineAt(position));
        return start + line.rowOf(static_cast<int>(position - start)).start;
    }
    case Motion::RowEnd:
        return rowEnd(position);
    case Motion::TextStart:
        return 0;
    case Motion::TextEnd:
        return m_text.length();
    case Motion::NextRow:
    case Motion::PreviousRow:
    case Motion::NextPage:
    case Motion::PreviousPage:
        break;
    }
    return movedVertically(position, motion);
}

CaretGeometry::Place CaretGeometry::placeAt(QPoint point) const
{
    qsizetype line = m_scroll.firstLine();
    int y = point.y() - m_scroll.top(line);
    while (y < 0 && line > 0)
        y += m_layout.exactHeight(--line);
    while (line < m_text.lineCount() - 1 && y >= m_layout.exactHeight(line))
        y -= m_layout.exactHeight(line++);
    return {line, {point.x(), y}};
}

qsizetype CaretGeometry::movedVertically(qsizetype position, Motion motion)
{
    const QRect from = caret(position);
    if (m_goalPosition != position)
        m_goal = from.x();
    const bool up = motion == Motion::PreviousRow || motion == Motion::PreviousPage;
    const bool page = motion == Motion::PreviousPage || motion == Motion::NextPage;
    const int distance = page ? pageHeight() : 0;
    const int y = up ? from.top() - 1 - distance : from.bottom() + 1 + distance;
    m_goalPosition = positionAt({m_goal, y});
    if (m_goalPosition == position) // there is no row any more
        return up ? 0 : m_text.length();
    return m_goalPosition;
}

qsizetype CaretGeometry::rowEnd(qsizetype position) const
{
    const qsizetype line = m_text.lineAt(position);
    const qsizetype start = m_text.lineStart(line);
    const LineLayout::Row& row = m_layout.line(line).rowOf(static_cast<int>(position - start));
    const bool isLast = start + row.end == m_text.lineEnd(line);
    // Behind the last character of a wrapped row is already the next one.
    return start + (isLast ? row.end : std::max(row.end - 1, row.start));
}

int CaretGeometry::pageHeight() const
{
    return std::max(m_scroll.height() * 9 / 10, 1);
}
