#pragma once

#include <QLabel>
#include <QLayout>
#include <QLineEdit>

#include <initializer_list>

class QComboBox;
class xpButton;

// Controls as the small forms have them, with their given names.

inline constexpr int formSpacing = 8; // between controls

QLabel* makeLabel(const QString& name, const QString& text = {}, QWidget* parent = nullptr);
// Bold, and so many times as large as ordinary text.
QLabel* makeHeading(QLabel* label, double scale);
// The label names the field for whoever cannot see that they stand together.
QLineEdit* makeField(const QString& name, QLabel* label,
                     QLineEdit::EchoMode echo = QLineEdit::Normal);
// One that takes any text, and keeps its rows.
QComboBox* makeCombo(const QString& name, const QString& accessibleName);
xpButton* makeButton(const QString& name, const QString& caption, QWidget* parent = nullptr);

// The margins of a form.
void setFormMargins(QLayout* layout);
// Those of a form that is always as large as its contents need.
void setFormLayout(QLayout* layout);
// Buttons at the right edge, in the order given.
QLayout* makeButtonRow(std::initializer_list<xpButton*> buttons);
