#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

// A text of any characters as the value of one line in a profile file, and back: in double quotes,
// with backslashes before what would end it. Also reads unquoted values, "\x" with hexadecimal
// digits, octal digits, and a leading "@@" for "@".
QByteArray toStoredText(const QString& text);
QString fromStoredText(QByteArrayView stored);
