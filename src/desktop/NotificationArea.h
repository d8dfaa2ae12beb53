#pragma once

#include <QElapsedTimer>
#include <QIcon>
#include <QObject>
#include <QSystemTrayIcon>

class QMenu;

// The part of the desktop that shows small icons, with the operations and mouse messages that a
// tray icon is made of.
class NotificationArea : public QObject
{
    Q_OBJECT
public:
    enum class Message {
        LButtonDown = 513,
        LButtonUp = 514,
        LButtonDblClk = 515,
        RButtonDown = 516,
        RButtonUp = 517,
        RButtonDblClk = 518,
    };
    struct Record
    {
        QIcon icon;
        QString tip;
    };

    virtual bool isAvailable() const = 0;
    virtual void add(const Record& record) = 0; // of an icon that is there: nothing happens
    virtual void modify(const Record& record) = 0;
    virtual void remove() = 0;
    // For hosts that draw an icon's menu themselves and send no right click. Others show it before
    // the right click is reported, so its handler leaves a visible menu alone.
    virtual void setMenu(QMenu* menu) = 0;
    // A notice of the desktop, gone by itself. Nothing in the texts is markup.
    virtual void notify(const QString& title, const QString& body) = 0;

Q_SIGNALS:
    void mouse(Message message);
};

// The notification area of X11 and of StatusNotifierItem hosts. On a desktop without one the icon
// waits, unseen, until there is one.
class DesktopNotificationArea final : public NotificationArea
{
    Q_OBJECT
public:
    DesktopNotificationArea();

    bool isAvailable() const override;
    void add(const Record& record) override;
    void modify(const Record& record) override;
    void remove() override;

    void setMenu(QMenu* menu) override;
    void notify(const QString& title, const QString& body) override;

private:
    void activated(QSystemTrayIcon::ActivationReason reason);
    bool isSecondClick(QSystemTrayIcon::ActivationReason reason);

    QSystemTrayIcon m_icon;
    QElapsedTimer m_sinceClick;
    QSystemTrayIcon::ActivationReason m_lastClick = QSystemTrayIcon::Unknown;
};
