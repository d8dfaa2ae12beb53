#include "platform/FlashWindow.h"

#include <QApplication>

void FlashWindow(QWidget& window)
{
    // With an end of its own, so that the window stops when its timer's ticks do.
    constexpr int lightMilliseconds = 500;
    QApplication::alert(&window, lightMilliseconds);
}
