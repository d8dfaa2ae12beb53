#pragma once

#include <QDateTime>
#include <QLocale>
#include <QString>

// How dates and times read, in the way of the user's locale. All texts take them from here.
namespace locale_texts {

QString shortDate(QDate date, const QLocale& locale = QLocale::system());
QString shortDateTime(const QDateTime& when, const QLocale& locale = QLocale::system());
// With seconds and without a time zone.
QString longTime(QTime time, const QLocale& locale = QLocale::system());

} // namespace locale_texts
