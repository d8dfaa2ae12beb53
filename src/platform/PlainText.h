#pragma once

#include <QLabel>

// The one way to show texts: as they stand. The toolkit guesses in labels and tool tips whether a
// text is markup, and markup from outside makes it open files.

QLabel* plainLabel(const QString& text = {}, QWidget* parent = nullptr);
void setPlainToolTip(QWidget& widget, const QString& text);
