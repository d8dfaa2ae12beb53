#include "view/ChatScroll.h"

#include "view/ChatLayout.h"

#include <algorithm>

ChatScroll::ChatScroll(ChatLayout& layout)
    : m_layout(layout)
{
}

void ChatScroll::textChanged(const ChatText::Change& change)
{
    if (change.line < m_line)
        m_line = std::max(change.line, m_line + change.addedLines - change.removedLines);
}

void ChatScroll::settle()
{
    m_layout.update();
    m_line = std::min(m_line, m_layout.text().lineCount() - 1);
    if (!m_following) {
        normalise();
        m_following = !fill();
    }
    if (m_following) {
        placeAtEnd();
        fill();
    }
    m_layout.keepNear(m_line, m_lastLine);
}

void ChatScroll::scrollBy(int pixels)
{
    settle();
    m_hidden += pixels;
    m_following = false;
    settle();
}

void ChatScroll::scrollTo(qint64 value)
{
    m_layout.update();
    m_following = value >= maximum();
    m_line = m_layout.lineAt(std::max<qint64>(value - margin, 0));
    m_hidden = static_cast<int>(value - margin - m_layout.top(m_line));
    settle();
}

void ChatScroll::centre(qsizetype line)
{
    m_following = false;
    m_line = line;
    m_hidden = -m_height / 2;
    settle();
}

int ChatScroll::top(qsizetype line) const
{
    return static_cast<int>(m_layout.top(line) - m_layout.top(m_line)) - m_hidden;
}

qint64 ChatScroll::value() const
{
    return std::clamp<qint64>(margin + m_layout.top(m_line) + m_hidden, 0, maximum());
}

qint64 ChatScroll::maximum() const
{
    return std::max<qint64>(m_layout.height() + margin + margin - m_height, 0);
}

void ChatScroll::placeAtEnd()
{
    m_line = m_layout.text().lineCount() - 1;
    int missing = m_height - margin - m_layout.exactHeight(m_line);
    while (missing > 0 && m_line > 0)
        missing -= m_layout.exactHeight(--m_line);
    m_hidden = m_line == 0 ? std::max(-missing, -margin) : -missing;
}

void ChatScroll::normalise()
{
    const qsizetype lastLine = m_layout.text().lineCount() - 1;
    while (m_line > 0 && m_hidden < 0)
        m_hidden += m_layout.exactHeight(--m_line);
    while (m_line < lastLine && m_hidden >= m_layout.exactHeight(m_line))
        m_hidden -= m_layout.exactHeight(m_line++);
    if (m_line == 0)
        m_hidden = std::max(m_hidden, -margin);
}

bool ChatScroll::fill()
{
    const qsizetype lineCount = m_layout.text().lineCount();
    int bottom = -m_hidden;
    qsizetype line = m_line;
    while (bottom < m_height && line < lineCount)
        bottom += m_layout.exactHeight(line++);
    m_lastLine = std::max(line - 1, m_line);
    return line < lineCount || bottom + margin > m_height;
}
