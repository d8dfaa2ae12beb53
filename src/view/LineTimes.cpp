#include "view/LineTimes.h"

#include <algorithm>

void LineTimes::came(qsizetype firstLine, qint64 seconds)
{
    while (!m_entries.empty() && m_entries.back().line >= firstLine)
        m_entries.pop_back();
    const auto time = static_cast<quint32>(seconds);
    if (m_entries.empty() || m_entries.back().seconds != time)
        m_entries.push_back({static_cast<quint32>(firstLine), time});
}

void LineTimes::edited(const ChatText::Change& change)
{
    for (Entry& entry : m_entries)
        entry.line = static_cast<quint32>(change.movedLine(entry.line));
    // Of entries that have met the last one speaks for the lines behind it.
    const auto kept = std::unique(m_entries.rbegin(), m_entries.rend(),
                                  [](const Entry& a, const Entry& b) { return a.line == b.line; });
    m_entries.erase(m_entries.begin(), kept.base());
}

qint64 LineTimes::at(qsizetype line) const
{
    const auto next =
        std::upper_bound(m_entries.begin(), m_entries.end(), line,
                         [](qsizetype value, const Entry& entry) { return value < entry.line; });
    return next == m_entries.begin() ? unknown : std::prev(next)->seconds;
}
