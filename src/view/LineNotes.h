#pragma once

#include "view/LineTimes.h"

#include <functional>
#include <vector>

// What a chat view knows of its lines beside their text: when each came, which ones are meant for
// the reader, and where he left off reading. A line that is appended costs the same however many
// there are.
class LineNotes final
{
public:
    using Now = std::function<qint64()>; // seconds since 1970

    explicit LineNotes(Now now);

    void setNow(Now now) { m_now = std::move(now); }
    void textChanged(const ChatText::Change& change, qsizetype lineCount);

    const LineTimes& times() const { return m_times; }

    // Marks the last whole line.
    void markLast();
    bool isMarked(qsizetype line) const;
    const std::vector<qsizetype>& marked() const { return m_marked; } // ascending

    // He looks away now.
    void leave() { m_readTo = m_whole; }
    // The first line that came since he last looked away; -1 when none did, or when nothing stands
    // above it.
    qsizetype firstUnread() const { return m_readTo > 0 && m_readTo < m_whole ? m_readTo : -1; }

private:
    void edited(const ChatText::Change& change);

    Now m_now;
    LineTimes m_times;
    std::vector<qsizetype> m_marked;
    qsizetype m_whole = 0; // lines that have their line end
    qsizetype m_readTo = -1;
};
