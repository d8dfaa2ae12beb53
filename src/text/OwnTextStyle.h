#pragma once

#include <QString>

// How the user's own text goes out: style characters and a colour number in front of it.
struct OwnTextStyle
{
    QString TextColor{u'1'}; // decimal
    QString BoldPrefix;      // empty or strBold
    QString UnderlinePrefix; // empty or strUnderline

    // A message with its style in front; the blank parts the colour from a text of digits.
    QString coded(const QString& text) const;
};
