#pragma once

#include "Surroundings.h"
#include "desktop/NotificationArea.h"
#include "desktop/WavePlayer.h"
#include "desktop/WebModule.h"
#include "platform/EventLoop.h"
#include "support/StandIns.h"
#include "text/Links.h"

#include <QtWidgets>

// The real event loop, in which a pause is only a yield.
struct HastyEventLoop final : EventLoop
{
    void DoEvents() override { QCoreApplication::processEvents(); }
    void Pause(double) override { QCoreApplication::processEvents(); }
};

struct RecordingLinks final : LinkOpener
{
    void OpenLink(const QString& link) override { opened += link; }

    QStringList opened;
};

struct RecordingTray final : NotificationArea
{
    bool isAvailable() const override { return available; }
    void add(const Record& record) override
    {
        isShown = true;
        last = record;
    }
    void modify(const Record& record) override { last = record; }
    void remove() override { isShown = false; }
    void setMenu(QMenu* trayMenu) override { menu = trayMenu; }
    void notify(const QString& title, const QString& body) override
    {
        notices += QString(title + QLatin1Char('|') + body);
    }

    bool available = true;
    bool isShown = false;
    Record last;
    QMenu* menu = nullptr;
    QStringList notices;
};

struct RecordingWaves final : WavePlayer
{
    bool play(const QString& file) override
    {
        played += file;
        return true;
    }

    QStringList played;
};

// The window of this class that is on the screen.
template<typename Window>
Window* shown()
{
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        auto* window = qobject_cast<Window*>(widget);
        if (window && window->isVisible())
            return window;
    }
    return nullptr;
}

inline QWidget* windowTitled(const QString& title)
{
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && window->windowTitle() == title)
            return window;
    }
    return nullptr;
}

// What one Messenger of a test is set into. Folders are its own, the network is one loopback
// address, and the end of the program is counted.
class TestSurroundings final
{
public:
    // With the real event loop, if not another one; on the server's own address, if no other one.
    // With boxes that answer by themselves, if no others are given.
    explicit TestSurroundings(const QString& address, EventLoop* events = nullptr,
                              const QString& ownAddress = {}, Dialogs* boxes = nullptr)
        : address(address)
        , m_localAddress(ownAddress.isEmpty() ? address : ownAddress)
        , m_events(events ? *events : m_ownEvents)
        , m_boxes(boxes)
    {
    }

    operator Surroundings() // NOLINT(google-explicit-constructor): that is all it is for
    {
        return {
            .configFolder = folder.filePath(QStringLiteral("config")),
            .autostartFolder = folder.filePath(QStringLiteral("autostart")),
            .serverHost = address,
            .localAddress = QHostAddress(m_localAddress),
            .identPort = identPort,
            .dialogs = m_boxes ? *m_boxes : dialogs,
            .events = m_events,
            .clock = clock,
            .random = [] { return 0.0; },
            .links = links,
            .notificationArea = tray,
            .waves = waves,
            .askWebEngine =
                [this] {
                    ++enginesAsked;
                    return WebModule::Answer{engine, QStringLiteral("none here")};
                },
            .end = [this] { ++ends; },
            .tell = [this](const QString& line) { told += line; },
        };
    }

    QString settingsPath() const { return folder.filePath(QStringLiteral("config/settings.ini")); }
    bool writeSettings(const QByteArray& content) const
    {
        QFile file(settingsPath());
        return QDir().mkpath(folder.filePath(QStringLiteral("config"))) &&
               file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
    }

    // The n-th address of this process, one that no other test uses at the same time.
    static QString ownAddress(int n)
    {
        const qint64 pid = QCoreApplication::applicationPid();
        return QStringLiteral("127.%1.%2.%3").arg(60 + pid / 250 % 190).arg(pid % 250 + 1).arg(n);
    }

    const QString address; // of the server
    QTemporaryDir folder;
    ScriptedDialogs dialogs;
    StoppedClock clock;
    RecordingLinks links;
    RecordingTray tray;
    RecordingWaves waves;
    QStringList told;
    int enginesAsked = 0;
    WebEngine* engine = nullptr; // what is answered
    int ends = 0;
    int identPort = 11300; // needs no privilege; the address is ours alone

private:
    QString m_localAddress;
    QtEventLoop m_ownEvents;
    EventLoop& m_events;
    Dialogs* m_boxes;
};
