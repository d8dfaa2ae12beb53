#include "common/Conversions.h"

#include "common/TextHelpers.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

using namespace Qt::StringLiterals;

// The decimal number that the text begins with.
double leadingNumber(const QString& text)
{
    const QString source = trimBlanks(beforeNul(text));
    qsizetype end = 0;
    bool point = false;
    bool digits = false;
    for (; end < source.size(); ++end) {
        const QChar c = source[end];
        if (c >= u'0' && c <= u'9')
            digits = true;
        else if (c == u'.' && !point)
            point = true;
        else if (end != 0 || (c != u'+' && c != u'-'))
            break;
    }
    if (!digits)
        throw RunTimeError(RunTimeError::Number::TypeMismatch);
    return source.left(end).toDouble();
}

template<typename Integer>
Integer rounded(double value)
{
    const double whole = std::nearbyint(value); // halves go to the even neighbour
    if (whole < static_cast<double>(std::numeric_limits<Integer>::min()) ||
        whole > static_cast<double>(std::numeric_limits<Integer>::max()))
        throw RunTimeError(RunTimeError::Number::Overflow);
    return static_cast<Integer>(whole);
}

} // namespace

Int16 toInt16(const QString& text)
{
    return Int16(rounded<std::int16_t>(leadingNumber(text)));
}

Int16 wholeInt16(const QString& text)
{
    const bool hasSign = text.startsWith(u'-') || text.startsWith(u'+');
    const bool isNumber = std::all_of(text.begin() + (hasSign ? 1 : 0), text.end(),
                                      [](QChar c) { return c >= u'0' && c <= u'9'; });
    if (!isNumber)
        throw RunTimeError(RunTimeError::Number::TypeMismatch);
    return toInt16(text);
}

qint32 toInt32(const QString& text)
{
    return rounded<qint32>(leadingNumber(text));
}

bool toBoolean(const QString& text)
{
    const QString word = trimBlanks(beforeNul(text)).toLower();
    if (word == "true"_L1)
        return true;
    if (word == "false"_L1)
        return false;
    return leadingNumber(word) != 0;
}

QString booleanWord(bool value)
{
    return value ? u"True"_s : u"False"_s;
}
