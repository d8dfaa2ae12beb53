#pragma once

#include "common/Int16.h"

#include <QString>

// Number and truth texts as the settings and the wire carry them. Only what stands before the
// first code 0 counts. A text that does not begin with a number raises TypeMismatch (13), a
// number outside the type Overflow (6).

Int16 toInt16(const QString& text);
qint32 toInt32(const QString& text);

// "true" and "false" in any case, or a number, non-zero being true.
bool toBoolean(const QString& text);

// The word for a truth value as it is stored: "True" or "False".
QString booleanWord(bool value);
