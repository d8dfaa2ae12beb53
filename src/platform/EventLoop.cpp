#include "platform/EventLoop.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>

void QtEventLoop::DoEvents()
{
    QCoreApplication::processEvents();
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
