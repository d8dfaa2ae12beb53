#pragma once

#include "desktop/WebTab.h"
#include "platform/Clock.h"
#include "platform/Dialogs.h"
#include "platform/EventLoop.h"
#include "settings/RememberedPassword.h"

#include <QHostAddress>
#include <QString>

#include <functional>

class LinkOpener;
class NotificationArea;
class WavePlayer;

// What one running program is set into. A test sets it into surroundings of its own; references
// outlive the program.
struct Surroundings
{
    QString configFolder;    // settings.ini and the per-user stores
    QString autostartFolder; // programs that start with the desktop
    QString serverHost;      // for this run; empty: the settings say
    QString room{};          // the same of the room entered there
    QHostAddress localAddress{QHostAddress::Any};
    int identPort = 113;

    Dialogs& dialogs;
    EventLoop& events;
    const Clock& clock;
    std::function<double()> random; // 0 up to, but not including, 1
    LinkOpener& links;
    NotificationArea& notificationArea;
    WavePlayer& waves;
    WebTab::AskEngine askWebEngine;              // with the first page
    RememberedPassword::AskKeyring askKeyring{}; // with the first password to remember
    std::function<void()> end;
    // What the user has to know, one line at a time; it waits for nothing.
    std::function<void(const QString& line)> tell = {};
};
