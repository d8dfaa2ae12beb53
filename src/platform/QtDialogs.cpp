#include "platform/QtDialogs.h"

#include "common/OneLine.h"
#include "platform/PlainText.h"

#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPointer>
#include <QVBoxLayout>

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
        plainBox(toolkitIcon(icon), title, text, buttons, QApplication::activeWindow()));
    const int answer = box->exec();
    delete box;
    return answer;
}

// The toolkit's own one guesses what its label holds and takes "&" for a key.
class Prompt final : public QDialog
{
public:
    Prompt(const QString& text, const QString& title)
        : QDialog(QApplication::activeWindow())
        , m_answer(new QLineEdit)
    {
        setWindowTitle(title);
        m_answer->setAccessibleName(text);
        auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
        connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
        connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
        auto* layout = new QVBoxLayout(this);
        layout->setSizeConstraint(QLayout::SetMinAndMaxSize);
        layout->addWidget(plainLabel(text));
        layout->addWidget(m_answer);
        layout->addWidget(buttons);
    }

    QString answer() const { return oneLine(m_answer->text()); }

private:
    QLineEdit* m_answer;
};

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
    const QPointer box(new Prompt(prompt, title));
    const bool accepted = box->exec() == QDialog::Accepted;
    QString answer = accepted && box ? box->answer() : QString();
    delete box;
    return answer;
}

void QtDialogs::Beep()
{
    QApplication::beep();
}
