#include "text/TextHistory.h"

void TextHistory::add(const QString& text, int limit)
{
    if (m_lines.size() > limit) {
        if (m_lines.isEmpty()) // a limit below zero
            throw RunTimeError(RunTimeError::Number::SubscriptOutOfRange);
        m_lines.removeFirst();
    }
    m_lines.append(text);
    m_cursor = m_lines.size() + 1;
}

std::optional<QString> TextHistory::back()
{
    if (m_cursor < 2)
        return std::nullopt;
    --m_cursor;
    return m_lines.value(m_cursor - 1);
}

std::optional<QString> TextHistory::forward()
{
    if (m_cursor >= m_lines.size())
        return std::nullopt;
    ++m_cursor;
    return m_lines.value(m_cursor - 1);
}
