#include "desktop/NotificationArea.h"

#include <QApplication>
#include <QMenu>

namespace {

// Some hosts read notices as markup and some do not, so nothing that could be markup is left.
QString withoutMarkup(QString text)
{
    return text.replace(u'<', QChar(u'\u2039'))
        .replace(u'>', QChar(u'\u203a'))
        .replace(u'&', QChar(u'\uff06'));
}

} // namespace

DesktopNotificationArea::DesktopNotificationArea()
    : m_icon(this)
{
    connect(&m_icon, &QSystemTrayIcon::activated, this, &DesktopNotificationArea::activated);
}

bool DesktopNotificationArea::isAvailable() const
{
    return QSystemTrayIcon::isSystemTrayAvailable();
}

void DesktopNotificationArea::add(const Record& record)
{
    modify(record);
    m_icon.show();
}

void DesktopNotificationArea::modify(const Record& record)
{
    m_icon.setIcon(record.icon);
    m_icon.setToolTip(record.tip);
}

void DesktopNotificationArea::remove()
{
    m_icon.hide();
}

void DesktopNotificationArea::setMenu(QMenu* menu)
{
    m_icon.setContextMenu(menu);
}

void DesktopNotificationArea::notify(const QString& title, const QString& body)
{
    m_icon.showMessage(withoutMarkup(title), withoutMarkup(body), m_icon.icon());
}

// Hosts on D-Bus report two single clicks where X11 reports a double click.
bool DesktopNotificationArea::isSecondClick(QSystemTrayIcon::ActivationReason reason)
{
    const bool second = m_lastClick == reason && m_sinceClick.isValid() &&
                        m_sinceClick.elapsed() < QApplication::doubleClickInterval();
    m_lastClick = second ? QSystemTrayIcon::Unknown : reason;
    m_sinceClick.start();
    return second;
}

void DesktopNotificationArea::activated(QSystemTrayIcon::ActivationReason reason)
{
    // Only whole clicks are reported; each becomes the two messages it is made of.
    switch (reason) {
    case QSystemTrayIcon::Trigger:
        Q_EMIT mouse(isSecondClick(reason) ? Message::LButtonDblClk : Message::LButtonDown);
        Q_EMIT mouse(Message::LButtonUp);
        break;
    case QSystemTrayIcon::DoubleClick:
        m_lastClick = QSystemTrayIcon::Unknown;
        Q_EMIT mouse(Message::LButtonDblClk);
        Q_EMIT mouse(Message::LButtonUp);
        break;
    case QSystemTrayIcon::Context:
        Q_EMIT mouse(isSecondClick(reason) ? Message::RButtonDblClk : Message::RButtonDown);
        Q_EMIT mouse(Message::RButtonUp);
        break;
    case QSystemTrayIcon::MiddleClick:
    case QSystemTrayIcon::Unknown:
        break;
    }
}
