#include "platform/CaretRest.h"

#include <QApplication>
#include <QEvent>

namespace {

constexpr int quietMilliseconds = 10000;

} // namespace

CaretRest::CaretRest(QObject* application)
    : QObject(application)
    , m_flashTime(QApplication::cursorFlashTime())
{
    m_quiet.setSingleShot(true);
    m_quiet.setInterval(quietMilliseconds);
    connect(&m_quiet, &QTimer::timeout, this, [] { QApplication::setCursorFlashTime(0); });
    application->installEventFilter(this);
    m_quiet.start();
}

bool CaretRest::eventFilter(QObject*, QEvent* event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::MouseButtonPress:
    case QEvent::WindowActivate:
        if (!m_quiet.isActive())
            QApplication::setCursorFlashTime(m_flashTime);
        m_quiet.start();
        break;
    default:
        break;
    }
    return false;
}
