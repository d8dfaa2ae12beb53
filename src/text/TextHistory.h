#pragma once

#include "common/Int16.h"

#include <QStringList>

#include <optional>

// What has been sent, for the arrow keys. The newest line is where forward ends: it does not give
// the empty field back.
class TextHistory final
{
public:
    // Room is made before the line comes in and not behind it, so one more than the limit is
    // kept. A limit below zero raises SubscriptOutOfRange (9).
    void add(const QString& text, int limit);

    // The line to show next; none at either end.
    std::optional<QString> back();
    std::optional<QString> forward();

private:
    QStringList m_lines;
    Int16 m_cursor; // one-based; 0 before the first line
};
