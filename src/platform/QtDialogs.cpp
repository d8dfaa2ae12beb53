#include "platform/QtDialogs.h"

#include <QApplication>
#include <QInputDialog>
#include <QMessageBox>

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

int show(const QString& text, const QString& title, Dialogs::Icon icon,
         QMessageBox::StandardButtons buttons)
{
    QMessageBox box(toolkitIcon(icon), title, text, buttons, QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText); // a stranger's text may stand in it
    return box.exec();
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
    bool accepted = false;
    const QString answer = QInputDialog::getText(QApplication::activeWindow(), title, prompt,
                                                 QLineEdit::Normal, {}, &accepted);
    return accepted ? answer : QString();
}

void QtDialogs::Beep()
{
    QApplication::beep();
}
