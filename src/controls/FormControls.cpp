#include "controls/FormControls.h"

#include "controls/Named.h"
#include "controls/xpButton.h"
#include "platform/PlainText.h"

#include <QHBoxLayout>

namespace {

constexpr int margin = 12;
constexpr int spacing = 8;
constexpr int fieldWidth = 220;

} // namespace

QLabel* makeLabel(const QString& name, const QString& text)
{
    auto* label = plainLabel(text);
    label->setObjectName(name);
    return label;
}

QLineEdit* makeField(const QString& name, QLabel* label, QLineEdit::EchoMode echo)
{
    auto* field = new QLineEdit;
    field->setObjectName(name);
    field->setEchoMode(echo);
    field->setMinimumWidth(fieldWidth);
    field->setAccessibleName(label->text().remove(u':').trimmed());
    label->setBuddy(field);
    return field;
}

xpButton* makeButton(const QString& name, const QString& caption, QWidget* parent)
{
    return named(new xpButton(caption, xpButton::Big, parent), name, caption);
}

void setFormLayout(QLayout* layout)
{
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->setSpacing(spacing);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

QLayout* makeButtonRow(std::initializer_list<xpButton*> buttons)
{
    auto* row = new QHBoxLayout;
    row->setSpacing(spacing);
    row->addStretch();
    for (xpButton* button : buttons)
        row->addWidget(button);
    return row;
}
