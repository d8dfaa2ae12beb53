#pragma once

#include <QDateTime>

// The date and time of a number of seconds since 1 January 1970, as it stands in universal time:
// there is no time zone correction.
inline QDateTime DateFromUnix(qint32 seconds)
{
    return QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC);
}
