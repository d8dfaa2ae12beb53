#include "platform/FramePace.h"

#include <QCoreApplication>
#include <QEvent>
#include <QTimerEvent>
#include <QWidget>

#include <algorithm>

FramePace::FramePace(QWidget& window)
    : QObject(&window)
    , m_window(window)
{
    window.installEventFilter(this);
}

// The toolkit asks for one painting and does not ask again before it has been: an event that is
// kept back here is missed by nobody until the timer brings another.
bool FramePace::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::UpdateRequest)
        return QObject::eventFilter(watched, event);
    if (const qint64 wait = rest(); wait > 0) {
        if (!m_due.isActive())
            m_due.start(static_cast<int>(wait), Qt::PreciseTimer, this);
        return true;
    }
    constexpr qint64 shortest = 8;
    m_due.stop();
    m_sincePainting.start();
    const bool handled = watched->event(event);
    m_restTime = std::max(shortest, 4 * m_sincePainting.restart());
    return handled;
}

void FramePace::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_due.timerId())
        return QObject::timerEvent(event);
    m_due.stop();
    m_restTime = 0;
    QCoreApplication::postEvent(&m_window, new QEvent(QEvent::UpdateRequest), Qt::LowEventPriority);
}

qint64 FramePace::rest() const
{
    return m_sincePainting.isValid() ? m_restTime - m_sincePainting.elapsed() : 0;
}
