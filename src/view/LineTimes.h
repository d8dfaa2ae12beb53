#pragma once

#include "view/ChatText.h"

#include <vector>

// When the lines of a chat view came, in seconds since 1970. Lines of one second share an entry,
// so a burst costs next to nothing.
class LineTimes final
{
public:
    static constexpr qint64 unknown = -1;

    // The lines from that one on, up to the next call.
    void came(qsizetype firstLine, qint64 seconds);
    void edited(const ChatText::Change& change);
    qint64 at(qsizetype line) const;

private:
    struct Entry
    {
        quint32 line = 0;
        quint32 seconds = 0;
    };

    std::vector<Entry> m_entries;
};
