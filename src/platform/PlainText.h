#pragma once

#include <QLabel>
#include <QMessageBox>

// As much of a text as a person can read in a title, a label, a hint or a box. A line of the server
// may be megabytes long; the display server ends a program with such a title.
QString forShow(const QString& text);

// The one way to show texts: as they stand. The toolkit guesses in labels and tool tips whether a
// text is markup, and markup from outside makes it open files. In a title it takes "[*]" for its
// own mark of a window that has been modified.

void setPlainTitle(QWidget& window, const QString& text);
QLabel* plainLabel(const QString& text = {}, QWidget* parent = nullptr);
void setPlainToolTip(QWidget& widget, const QString& text);

// As wide as its title asks for. What is too long for it can be read in a field that scrolls,
// opened by a button.
QMessageBox* plainBox(QMessageBox::Icon icon, const QString& title, const QString& text,
                      QMessageBox::StandardButtons buttons, QWidget* parent = nullptr);
