#pragma once

#include <QDateTime>
#include <QLocale>

// The current time and the forms in which texts carry it.
class Clock
{
public:
    virtual ~Clock() = default;

    virtual QDateTime now() const = 0;

    QString shortDate() const
    {
        return QLocale::system().toString(now().date(), QLocale::ShortFormat);
    }
    // Without the name of the time zone, which the toolkit's long format adds.
    QString longTime() const
    {
        const QString format = QLocale::system().timeFormat(QLocale::LongFormat);
        return QLocale::system().toString(now().time(), QString(format).remove(u't').trimmed());
    }
};

class SystemClock final : public Clock
{
public:
    QDateTime now() const override { return QDateTime::currentDateTime(); }
};
