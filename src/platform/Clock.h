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
    QString longTime() const
    {
        return QLocale::system().toString(now().time(), QLocale::LongFormat);
    }
};

class SystemClock final : public Clock
{
public:
    QDateTime now() const override { return QDateTime::currentDateTime(); }
};
