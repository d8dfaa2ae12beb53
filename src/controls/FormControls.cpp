#include "controls/FormControls.h"

#include "controls/Named.h"
#include "controls/xpButton.h"
#include "platform/PlainText.h"

#include <QComboBox>
#include <QHBoxLayout>

namespace {

constexpr int margin = 12;
constexpr int fieldWidth = 220;

} // namespace

QLabel* makeLabel(const QString& name, const QString& text, QWidget* parent)
{
    return named(plainLabel(text, parent), name);
}

QLabel* makeHeading(QLabel* label, double scale)
{
    QFont font = label->font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * scale);
    label->setFont(font);
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

QComboBox* makeCombo(const QString& name, const QString& accessibleName)
{
    auto* combo = named(new QComboBox, name, accessibleName);
    combo->setEditable(true);
    combo->setInsertPolicy(QComboBox::NoInsert);
    return combo;
}

xpButton* makeButton(const QString& name, const QString& caption, QWidget* parent)
{
    return named(new xpButton(caption, xpButton::Big, parent), name, caption);
}

void setFormMargins(QLayout* layout)
{
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->setSpacing(formSpacing);
}

void setFormLayout(QLayout* layout)
{
    setFormMargins(layout);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

QLayout* makeButtonRow(std::initializer_list<xpButton*> buttons)
{
    auto* row = new QHBoxLayout;
    row->setSpacing(formSpacing);
    row->addStretch();
    for (xpButton* button : buttons)
        row->addWidget(button);
    return row;
}
