#pragma once

#include <QString>

// What a one-line field takes of a text. Pasted text can hold more than one line, and a line end
// on its way to the server would begin a command of its own.
inline QString oneLine(const QString& text)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == u'\r' || text[i] == u'\n')
            return text.left(i);
    }
    return text;
}
