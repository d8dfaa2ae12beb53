#pragma once

#include <QColor>

class QLineEdit;

// Contrast of colours as people see it, and a ground for those that a paper swallows.

// How bright a colour looks, from 0 to 1.
double luminance(QRgb color);

// From 1, the same, to 21, black on white. Text wants 4.5.
double contrast(QRgb one, QRgb other);

// What to put behind text of a colour on such a paper: the softest ground that gives it a contrast
// of 4.5. Invalid for text that can be read as it is.
QColor readableGround(QRgb text, QRgb paper);

// Gives a field its colour of text, with a ground where it needs one.
void setReadableColor(QLineEdit& field, QRgb color);

// A part of the second colour in the first, from 0 to 1.
QColor mixed(const QColor& first, const QColor& second, double part);
