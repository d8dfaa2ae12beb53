#pragma once

class QWidget;

// Asks for attention once: the window's entry in the task bar lights up and goes out again. A
// window that is looked at already does not react. Whoever wants it to flash calls this at every
// tick of a timer.
void FlashWindow(QWidget& window);
