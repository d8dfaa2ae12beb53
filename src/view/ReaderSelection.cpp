#include "view/ReaderSelection.h"

#include <QTextBoundaryFinder>

#include <algorithm>

ReaderSelection::ReaderSelection(const ChatText& text)
    : m_text(text)
{
}

void ReaderSelection::select(qsizetype anchor, qsizetype caret)
{
    m_anchor = std::clamp<qsizetype>(anchor, 0, m_text.length());
    m_caret = std::clamp<qsizetype>(caret, 0, m_text.length());
}

void ReaderSelection::begin(qsizetype position, Unit unit)
{
    m_unit = unit;
    m_first = unitAt(position);
    select(m_first.start, m_first.end);
}

void ReaderSelection::dragTo(qsizetype position)
{
    const Range unit = unitAt(position);
    if (unit.start < m_first.start)
        select(m_first.end, unit.start);
    else
        select(m_first.start, std::max(unit.end, m_first.end));
}

void ReaderSelection::textChanged(const ChatText::Change& change)
{
    m_anchor = change.movedPosition(m_anchor);
    m_caret = change.movedPosition(m_caret);
    m_first = {change.movedPosition(m_first.start), change.movedPosition(m_first.end)};
}

ReaderSelection::Range ReaderSelection::unitAt(qsizetype position) const
{
    switch (m_unit) {
    case Unit::Word:
        return {wordStart(m_text, position), wordEnd(m_text, position)};
    case Unit::Line: {
        const qsizetype line = m_text.lineAt(position);
        return {m_text.lineStart(line), m_text.lineEnd(line)};
    }
    case Unit::Character:
        break;
    }
    return {position, position};
}

qsizetype nextCharacter(const ChatText& text, qsizetype position)
{
    const qsizetype line = text.lineAt(position);
    if (position >= text.lineEnd(line))
        return std::min(position + 1, text.length());
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text.lineText(line));
    finder.setPosition(position - text.lineStart(line));
    return text.lineStart(line) + finder.toNextBoundary();
}

qsizetype previousCharacter(const ChatText& text, qsizetype position)
{
    const qsizetype line = text.lineAt(position);
    if (position == text.lineStart(line))
        return std::max<qsizetype>(position - 1, 0);
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text.lineText(line));
    finder.setPosition(position - text.lineStart(line));
    return text.lineStart(line) + finder.toPreviousBoundary();
}

qsizetype wordStart(const ChatText& text, qsizetype position)
{
    const qsizetype line = text.lineAt(position);
    const qsizetype start = text.lineStart(line);
    QTextBoundaryFinder finder(QTextBoundaryFinder::Word, text.lineText(line));
    finder.setPosition(position - start);
    const bool hasWordHere = finder.isAtBoundary() && position < text.lineEnd(line);
    return start +
           std::max<qsizetype>(hasWordHere ? finder.position() : finder.toPreviousBoundary(), 0);
}

qsizetype wordEnd(const ChatText& text, qsizetype position)
{
    const qsizetype line = text.lineAt(position);
    QTextBoundaryFinder finder(QTextBoundaryFinder::Word, text.lineText(line));
    finder.setPosition(position - text.lineStart(line));
    const qsizetype boundary = finder.toNextBoundary();
    return boundary < 0 ? text.lineEnd(line) : text.lineStart(line) + boundary;
}

qsizetype nextWord(const ChatText& text, qsizetype position)
{
    const qsizetype line = text.lineAt(position);
    if (position == text.lineEnd(line))
        return std::min(position + 1, text.length());
    const QString words = text.lineText(line);
    qsizetype column = wordEnd(text, position) - text.lineStart(line);
    while (column < words.size() && words[column].isSpace())
        ++column;
    return text.lineStart(line) + column;
}

qsizetype previousWord(const ChatText& text, qsizetype position)
{
    const qsizetype line = text.lineAt(position);
    const qsizetype start = text.lineStart(line);
    if (position == start)
        return std::max<qsizetype>(position - 1, 0);
    const QString words = text.lineText(line);
    qsizetype column = position - start;
    while (column > 0 && words[column - 1].isSpace())
        --column;
    return column == 0 ? start : wordStart(text, start + column - 1);
}
