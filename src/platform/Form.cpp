#include "platform/Form.h"

#include "platform/Handlers.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QTimer>

void Form::Show()
{
    show();
    raise();
    activateWindow();
}

void Form::end(std::unique_ptr<Form> form)
{
    Form* ended = form.release();
    ended->m_ended = true;
    // Blocked rather than disconnected: the toolkit needs its own connections to the very end.
    ended->blockSignals(true);
    for (QObject* part : ended->findChildren<QObject*>()) {
        part->blockSignals(true);
        if (auto* timer = qobject_cast<QTimer*>(part))
            timer->stop();
    }
    ended->hide();
    if (ended->m_runningHandlers == 0)
        ended->deleteLater();
}

void Form::closeEvent(QCloseEvent* event)
{
    event->ignore(); // the slot hides it and lets it go
    Unload();
}

void Form::keyPressEvent(QKeyEvent* event)
{
    if (m_escape == Escape::Closes && event->matches(QKeySequence::Cancel))
        close();
    else
        QWidget::keyPressEvent(event);
}

RunningHandler::RunningHandler(QObject* context)
    : m_form(qobject_cast<Form*>(context))
{
    if (m_form)
        ++m_form->m_runningHandlers;
}

RunningHandler::~RunningHandler()
{
    if (m_form && --m_form->m_runningHandlers == 0 && m_form->m_ended)
        m_form->deleteLater();
}
