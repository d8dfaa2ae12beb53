#include "platform/PlainText.h"

using namespace Qt::StringLiterals;

QLabel* plainLabel(const QString& text, QWidget* parent)
{
    auto* label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    label->setText(text);
    return label;
}

void setPlainToolTip(QWidget& widget, const QString& text)
{
    // A tool tip has no format to set: what would be guessed to be markup is made markup of itself.
    widget.setToolTip(Qt::mightBeRichText(text) ? "<qt>"_L1 + text.toHtmlEscaped() + "</qt>"_L1
                                                : text);
}
