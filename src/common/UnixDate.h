#pragma once

#include <QDateTime>

// The date and time of a number of seconds since 1 January 1970, in universal time: the clock of
// the user's own place has no say in it.
inline QDateTime DateFromUnix(qint32 seconds)
{
    return QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC);
}
