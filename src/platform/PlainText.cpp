#include "platform/PlainText.h"

using namespace Qt::StringLiterals;

QString forShow(const QString& text)
{
    constexpr qsizetype readable = 1000;
    return text.size() <= readable ? text : text.left(readable) + u'…';
}

void setPlainTitle(QWidget& window, const QString& text)
{
    window.setWindowTitle(forShow(text).replace("[*]"_L1, "[*][*]"_L1)); // two of them show one
}

QLabel* plainLabel(const QString& text, QWidget* parent)
{
    auto* label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    label->setText(forShow(text));
    return label;
}

void setPlainToolTip(QWidget& widget, const QString& text)
{
    const QString shown = forShow(text);
    // A tool tip has no format to set: what would be guessed to be markup is made markup of itself.
    widget.setToolTip(Qt::mightBeRichText(shown) ? "<qt>"_L1 + shown.toHtmlEscaped() + "</qt>"_L1
                                                 : shown);
}
