#pragma once

#include <QString>

class QLineEdit;

// The toolkit's field shows pasted lines as one but keeps their ends, and a line end on its way to
// the server would begin a command of its own. This makes blanks of them.
void keepToOneLine(QLineEdit* field);

bool hasLineEnds(const QString& text);
