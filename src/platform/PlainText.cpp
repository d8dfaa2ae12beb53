#include "platform/PlainText.h"

#include <QGridLayout>

using namespace Qt::StringLiterals;

namespace {

// Lines are broken at blanks alone.
bool hasEndlessWord(const QString& text)
{
    constexpr qsizetype longest = 80; // characters
    for (const QStringView word : QStringView(text).tokenize(u' ')) {
        if (word.size() > longest)
            return true;
    }
    return false;
}

} // namespace

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

QMessageBox* plainBox(QMessageBox::Icon icon, const QString& title, const QString& text,
                      QMessageBox::StandardButtons buttons, QWidget* parent)
{
    auto* box = new QMessageBox(icon, title, {}, buttons, parent);
    box->setTextFormat(Qt::PlainText);
    const QString shown = forShow(text);
    box->setText(shown);
    if (shown != text || hasEndlessWord(text))
        box->setDetailedText(text);
    // It fixes its size by what is in its layout, and heeds no smallest width.
    constexpr int narrowest = 320;
    if (auto* layout = qobject_cast<QGridLayout*>(box->layout()))
        layout->addItem(new QSpacerItem(narrowest, 0), layout->rowCount(), 0, 1,
                        layout->columnCount());
    return box;
}
