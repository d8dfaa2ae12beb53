#include "platform/QtDialogs.h"

#include "common/OneLine.h"

#include <QApplication>
#include <QInputDialog>
#include <QMessageBox>
#include <QPointer>

namespace {

QMessageBox::Icon toolkitIcon(Dialogs::Icon icon)
{
    switch (icon) {
    case Dialogs::Icon::None:
        return QMessageBox::NoIcon;
    case Dialogs::Icon::Exclamation:
        return QMessageBox::Warning;
    case Dialogs::Icon::Question:
        return QMessageBox::Question;
    case Dialogs::Icon::Critical:
        return QMessageBox::Critical;
    }
    return QMessageBox::NoIcon;
}

// Events go on behind a box. One of them may delete the window that the box belongs to, and the box
// with it: nobody has answered then.
int show(const QString& text, const QString& title, Dialogs::Icon icon,
         QMessageBox::StandardButtons buttons)
{
    const QPointer box(
        new QMessageBox(toolkitIcon(icon), title, text, buttons, QApplication::activeWindow()));
    box->setTextFormat(Qt::PlainText); // a stranger's text may stand in it
    const int answer = box->exec();
    delete box;
    return answer;
}

} // namespace

void QtDialogs::MsgBox(const QString& text, const QString& title, Icon icon)
{
    show(text, title, icon, QMessageBox::Ok);
}

bool QtDialogs::askYesNo(const QString& text, const QString& title)
{
    return show(text, title, Icon::Question, QMessageBox::Yes | QMessageBox::No) ==
           QMessageBox::Yes;
}

QString QtDialogs::InputBox(const QString& prompt, const QString& title)
{
    const QPointer box(new QInputDialog(QApplication::activeWindow()));
    box->setWindowTitle(title);
    box->setLabelText(prompt);
    const bool accepted = box->exec() == QDialog::Accepted;
    QString answer = accepted && box ? oneLine(box->textValue()) : QString();
    delete box;
    return answer;
}

void QtDialogs::Beep()
{
    QApplication::beep();
}
