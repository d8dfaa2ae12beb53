#include "desktop/TrayMenu.h"

#include "platform/Handlers.h"

using namespace Qt::StringLiterals;

TrayMenu::TrayMenu(const Handlers& handlers, std::initializer_list<Entry> entries)
    : QMenu(u"&SysTray"_s)
{
    setObjectName(u"mnu_systray"_s);
    for (const Entry& entry : entries) {
        QAction* action = addAction(entry.caption);
        action->setObjectName(entry.name);
        handlers.connect(action, &QAction::triggered, this, entry.handler);
    }
}
