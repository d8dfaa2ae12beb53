#include "desktop/clsSysTray.h"

#include "common/RunTimeError.h"
#include "common/TextHelpers.h"
#include "platform/Dialogs.h"
#include "platform/Handlers.h"

#include <QEvent>
#include <QScopedValueRollback>
#include <QWidget>

using namespace Qt::StringLiterals;

namespace {

constexpr int tipLength = 63; // the field has 64 characters, and the last one ends it

} // namespace

WidgetSourceForm::WidgetSourceForm(QWidget& window)
    : m_window(window)
{
    m_window.installEventFilter(this);
}

bool WidgetSourceForm::eventFilter(QObject* watched, QEvent* event)
{
    // A spontaneous one tells of the desktop's icon for the window, not of a window shown.
    if (event->type() == QEvent::Show && !event->spontaneous())
        m_hiddenMinimized = false;
    return QObject::eventFilter(watched, event);
}

int WidgetSourceForm::WindowState() const
{
    if (m_hiddenMinimized || m_window.isMinimized())
        return Minimized;
    return m_window.isMaximized() ? Maximized : Normal;
}

void WidgetSourceForm::setWindowState(int state)
{
    m_hiddenMinimized = false;
    m_window.setWindowState(state == Minimized   ? Qt::WindowMinimized
                            : state == Maximized ? Qt::WindowMaximized
                                                 : Qt::WindowNoState);
}

void WidgetSourceForm::Show()
{
    m_window.show();
    m_window.raise();
    m_window.activateWindow();
}

void WidgetSourceForm::Hide()
{
    const bool minimized = WindowState() == Minimized;
    m_window.hide();
    // Whoever shows it next wants to see it.
    m_window.setWindowState(m_window.windowState() & ~Qt::WindowMinimized);
    m_hiddenMinimized = minimized;
}

void WidgetSourceForm::setCaption(const QString& caption)
{
    m_window.setWindowTitle(caption);
}

QIcon WidgetSourceForm::Icon() const
{
    return m_window.windowIcon();
}

clsSysTray::clsSysTray(const Handlers& handlers, NotificationArea& area, Dialogs& dialogs)
    : m_area(area)
    , m_dialogs(dialogs)
{
    connect(&m_area, &NotificationArea::mouse, this,
            [this, &handlers](NotificationArea::Message message) {
                if (m_hooked)
                    handlers.run([&] { pichook_MouseMove(message); });
            });
}

SourceForm& clsSysTray::source() const
{
    if (!m_sourceWindow)
        throw RunTimeError(RunTimeError::Number::ObjectVariableNotSet);
    return *m_sourceWindow;
}

void clsSysTray::setSourceWindow(SourceForm* window)
{
    m_sourceWindow = window;
    CreateHook();
}

void clsSysTray::CreateHook()
{
    try {
        const SourceForm& form = source();
        if (m_hooked)
            return; // there is one hook; another owner keeps it and its picture
        m_record.icon = form.Icon();
        m_hooked = true;
    } catch (const RunTimeError& error) {
        m_dialogs.MsgBox(error.message(), u"Error"_s, Dialogs::Icon::Critical);
    }
}

void clsSysTray::pichook_MouseMove(NotificationArea::Message message)
{
    if (m_handling)
        return;
    const QScopedValueRollback handling(m_handling, true);
    switch (message) {
    case NotificationArea::Message::LButtonDown:
        Q_EMIT LButtonDown();
        break;
    case NotificationArea::Message::LButtonUp:
        Q_EMIT LButtonUp();
        break;
    case NotificationArea::Message::LButtonDblClk:
        DefaultDoubleClick();
        break;
    case NotificationArea::Message::RButtonDown:
        Q_EMIT RButtonDown();
        break;
    case NotificationArea::Message::RButtonUp:
        Q_EMIT RButtonUp();
        break;
    case NotificationArea::Message::RButtonDblClk:
        Q_EMIT RButtonDblClk();
        break;
    }
}

void clsSysTray::DefaultDoubleClick()
{
    if (DefaultDblClk) {
        SourceForm& form = source();
        if (form.WindowState() == SourceForm::Minimized) {
            form.setWindowState(SourceForm::Maximized);
            form.Show();
        } else {
            form.setWindowState(SourceForm::Minimized);
            form.Hide();
        }
    }
    Q_EMIT LButtonDblClk();
}

void clsSysTray::RemoveFromSysTray()
{
    m_area.remove();
}

void clsSysTray::IconInSysTray()
{
    m_area.add(m_record);
}

void clsSysTray::MinToSysTray()
{
    IconInSysTray();
    source().Hide();
}

void clsSysTray::ChangeIcon(const QIcon& picture)
{
    m_icon = picture;
    m_record.icon = picture;
    m_area.modify(m_record);
}

void clsSysTray::ChangeToolTip(const QString& text)
{
    m_toolTip = text;
    m_record.tip = beforeNul(text.left(tipLength));
    m_area.modify(m_record);
    if (source().WindowState() == SourceForm::Minimized)
        source().setCaption(text);
}
