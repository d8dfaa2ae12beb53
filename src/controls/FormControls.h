#pragma once

#include <QLabel>
#include <QLayout>
#include <QLineEdit>

#include <initializer_list>

class xpButton;

// Controls as the small forms have them, with their given names.

QLabel* makeLabel(const QString& name, const QString& text);
// The label names the field for whoever cannot see that they stand together.
QLineEdit* makeField(const QString& name, QLabel* label,
                     QLineEdit::EchoMode echo = QLineEdit::Normal);
xpButton* makeButton(const QString& name, const QString& caption, QWidget* parent = nullptr);

// The margins of a form, which is always as large as its contents need.
void setFormLayout(QLayout* layout);
// Buttons at the right edge, in the order given.
QLayout* makeButtonRow(std::initializer_list<xpButton*> buttons);
