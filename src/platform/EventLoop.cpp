#include "platform/EventLoop.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>

void QtEventLoop::DoEvents()
{
    m_sinceOutside.start();
    QCoreApplication::processEvents();
}

void QtEventLoop::DoEventsAgain()
{
    constexpr qint64 moment = 250'000; // nanoseconds
    if (m_sinceOutside.isValid() && m_sinceOutside.nsecsElapsed() < moment)
        QCoreApplication::sendPostedEvents();
    else
        DoEvents();
}

void QtEventLoop::Pause(double seconds)
{
    const QDeadlineTimer deadline(static_cast<qint64>(seconds * 1000), Qt::PreciseTimer);
    QTimer wake; // so that the last wait for events ends in time
    wake.setTimerType(Qt::PreciseTimer);
    wake.setSingleShot(true);
    while (!deadline.hasExpired()) {
        wake.start(static_cast<int>(deadline.remainingTime()) + 1);
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}
