#pragma once

#include "common/Int16.h"

#include <QString>

// Number and truth texts as the settings and the wire carry them. Only what stands before the
// first code 0 counts. A text that does not begin with a number raises TypeMismatch (13), a
// number outside the type Overflow (6).

Int16 toInt16(const QString& text);
// The same of a text that is a number from end to end: a sign and digits, nothing behind them.
Int16 wholeInt16(const QString& text);
qint32 toInt32(const QString& text);

// The two words, however they are written, or a number: only zero is false.
bool toBoolean(const QString& text);

// "True" or "False", as it goes into a file.
QString booleanWord(bool value);
