#include "platform/LocaleTexts.h"

#include <QRegularExpression>

namespace {

using namespace Qt::StringLiterals;

// The long form names the time zone, in brackets or behind a comma of their own; what is left of
// these goes with it. "B" is the time of day in words, which the toolkit would print as a letter.
QString withoutZone(const QString& format)
{
    QString left;
    bool isQuoted = false;
    for (const QChar c : format) {
        if (c == u'\'')
            isQuoted = !isQuoted;
        if (isQuoted || (c != u't' && c != u'B'))
            left += c;
        else if (c == u'B')
            left += "AP"_L1;
    }
    static const QRegularExpression rests(u"[(\\[]\\s*[)\\]]|^[\\s,]+"_s);
    static const QRegularExpression end(u"[\\s,]+$"_s);
    return left.remove(rests).remove(end);
}

} // namespace

QString locale_texts::shortDate(QDate date, const QLocale& locale)
{
    return locale.toString(date, QLocale::ShortFormat);
}

QString locale_texts::shortDateTime(const QDateTime& when, const QLocale& locale)
{
    return locale.toString(when, QLocale::ShortFormat);
}

QString locale_texts::longTime(QTime time, const QLocale& locale)
{
    return locale.toString(time, withoutZone(locale.timeFormat(QLocale::LongFormat)));
}
