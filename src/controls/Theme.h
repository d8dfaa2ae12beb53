#pragma once

class QApplication;

// The look of all windows: one palette, one typeface, calm controls.
void applyTheme(QApplication& application);
