#pragma once

#include "platform/LocaleTexts.h"

// The current time and the forms in which texts carry it.
class Clock
{
public:
    virtual ~Clock() = default;

    virtual QDateTime now() const = 0;

    QString shortDate() const { return locale_texts::shortDate(now().date()); }
    QString longTime() const { return locale_texts::longTime(now().time()); }
};

class SystemClock final : public Clock
{
public:
    QDateTime now() const override { return QDateTime::currentDateTime(); }
};
