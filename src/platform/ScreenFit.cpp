#include "platform/ScreenFit.h"

#include <QApplication>
#include <QScreen>
#include <QWidget>
#include <QWindow>

#include <algorithm>

namespace {

constexpr QMargins usualFrame(2, 28, 2, 4);

QMargins drawnFrame(const QWidget& window)
{
    const QRect inner = window.geometry();
    const QRect outer = window.frameGeometry();
    return {inner.left() - outer.left(), inner.top() - outer.top(), outer.right() - inner.right(),
            outer.bottom() - inner.bottom()};
}

} // namespace

QMargins frameOf(const QWidget& window)
{
    if (window.isVisible() && !drawnFrame(window).isNull())
        return drawnFrame(window);
    for (const QWidget* other : QApplication::topLevelWidgets()) {
        if (other->isVisible() && other->windowType() == Qt::Window && !drawnFrame(*other).isNull())
            return drawnFrame(*other);
    }
    return usualFrame;
}

QRect roomOnScreen(const QWidget& window)
{
    return window.screen()->availableGeometry();
}

QRect fitted(QRect frame, const QRect& room)
{
    frame.setSize(frame.size().boundedTo(room.size()));
    frame.moveLeft(std::clamp(frame.left(), room.left(), room.right() - frame.width() + 1));
    frame.moveTop(std::clamp(frame.top(), room.top(), room.bottom() - frame.height() + 1));
    return frame;
}

QSize fittedSize(const QWidget& window, const QSize& contents)
{
    const QMargins frame = frameOf(window);
    return contents.boundedTo(roomOnScreen(window).size().shrunkBy(frame));
}

void setFrame(QWidget& window, const QRect& frame)
{
    window.resize(frame.size().shrunkBy(frameOf(window)));
    window.move(frame.topLeft());
    // Once made, a window that nobody has framed yet takes a place for that of its contents.
    if (window.windowHandle() && !window.windowHandle()->isVisible())
        window.windowHandle()->setFramePosition(frame.topLeft());
}
