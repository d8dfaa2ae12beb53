#pragma once

class QApplication;

// The look of all windows: one palette, one typeface, calm controls. Where the desktop is dark or
// of high contrast, so is the frame; what is written on stays light.
void applyTheme(QApplication& application);
