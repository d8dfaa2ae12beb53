#pragma once

#include <QMenu>

#include <functional>
#include <initializer_list>

class Handlers;

// The menu of the tray icon. It belongs to no window: it must work before there is one, and what
// keeps the user from a window must not keep him from the way out.
class TrayMenu final : public QMenu
{
    Q_OBJECT
public:
    struct Entry
    {
        QLatin1StringView name;
        QLatin1StringView caption;
        std::function<void()> handler;
    };

    TrayMenu(const Handlers& handlers, std::initializer_list<Entry> entries);
};
