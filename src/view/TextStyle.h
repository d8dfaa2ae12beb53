#pragma once

#include "view/RichTextBox.h"

#include <QHashFunctions>

// How a run of text looks. Without a font name or size it takes those of its view.
struct TextStyle
{
    QRgb color = qRgb(0, 0, 0);
    bool bold = false;
    bool underline = false;
    bool strikeThru = false;
    QString fontName;
    int fontSize = 0; // points

    bool operator==(const TextStyle&) const = default;
};

inline size_t qHash(const TextStyle& style, size_t seed = 0)
{
    return qHashMulti(seed, style.color, style.bold, style.underline, style.strikeThru,
                      style.fontName, style.fontSize);
}

inline size_t qHash(const InlinePicture& picture, size_t seed = 0)
{
    return qHashMulti(seed, picture.code, picture.resource, picture.size.width(),
                      picture.size.height());
}
