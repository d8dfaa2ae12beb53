#pragma once

#include <QMargins>
#include <QRect>
#include <QSize>

class QWidget;

// Windows and the screen that they come up on. Measures are logical pixels; a frame is a window
// with what the desktop draws around it.

// What the desktop draws around a window; a careful guess while nobody has drawn anything yet.
QMargins frameOf(const QWidget& window);

// The room that windows have on the window's screen.
QRect roomOnScreen(const QWidget& window);

// No larger than the room allows, and moved into it; where that cannot be, the upper left corner
// is what counts.
QRect fitted(QRect frame, const QRect& room);

// The size of contents with which the window fits its screen.
QSize fittedSize(const QWidget& window, const QSize& contents);

// Puts a window there that has not been shown yet, or moves and sizes one that has.
void setFrame(QWidget& window, const QRect& frame);
