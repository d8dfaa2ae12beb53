#include "common/TextHelpers.h"

using namespace Qt::StringLiterals;

namespace {

constexpr QChar carriageReturn{13};
constexpr QChar blank{32};

} // namespace

void SplitAt(const QString& source, QChar separator, QString& left, QString& right)
{
    const QString whole = source; // source may be left or right
    const qsizetype position = whole.indexOf(separator);
    left = position < 0 ? whole : whole.left(position);
    right = position < 0 ? whole : whole.mid(position + 1);
}

QString TextAfter(const QString& text, QChar separator)
{
    const qsizetype position = text.indexOf(separator);
    return position < 0 ? text : text.mid(position + 1);
}

QString TextBefore(const QString& text, QChar separator)
{
    const qsizetype position = text.indexOf(separator);
    return position < 0 ? text : text.left(position);
}

QString CutLeft(const QString& text, qsizetype count)
{
    return text.mid(count);
}

QString CutRight(const QString& text, qsizetype count)
{
    return count >= text.size() ? QString() : text.chopped(count);
}

QString GetWords(const QStringList& words, qsizetype first, qsizetype last)
{
    if (first < 1 || first > words.size() || last > words.size())
        return {};
    const qsizetype end = last == -1 ? words.size() : last;
    if (first > end)
        return {};
    return withoutCarriageReturns(words.mid(first - 1, end - first + 1).join(blank));
}

QString withLineFeeds(QString text)
{
    if (!text.contains(u'\r'))
        return text;
    text.replace("\r\n"_L1, "\n"_L1);
    return text.replace(u'\r', u'\n');
}

QString withoutCarriageReturns(QString text)
{
    text.remove(carriageReturn);
    return text;
}

QString trimBlanks(const QString& text)
{
    qsizetype from = 0;
    qsizetype to = text.size();
    while (from < to && text[from] == blank)
        ++from;
    while (to > from && text[to - 1] == blank)
        --to;
    return text.mid(from, to - from);
}

QString beforeNul(const QString& text)
{
    return TextBefore(text, QChar(u'\0'));
}
