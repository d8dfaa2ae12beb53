#pragma once

#include "common/Int16.h"

#include <QStringList>

#include <optional>

// Lines that were sent, for the arrow keys. There is no way past the newest one back to an empty
// line.
class TextHistory final
{
public:
    // Holds up to one line more than the limit: the test comes before the line is added. A limit
    // below zero raises SubscriptOutOfRange (9).
    void add(const QString& text, int limit);

    // The line to show next; none at either end.
    std::optional<QString> back();
    std::optional<QString> forward();

private:
    QStringList m_lines;
    Int16 m_cursor; // one-based; 0 before the first line
};
