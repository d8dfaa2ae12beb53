#pragma once

#include <QHash>
#include <QObject>
#include <QString>

class ActionEntry;
class QMenu;
class QMenuBar;
class QWidget;

// The menus of the main window, built from one table. Entries go by their names.
class MenuTree final : public QObject
{
    Q_OBJECT
public:
    explicit MenuTree(QWidget* window);

    QMenuBar* bar() const { return m_bar; }
    ActionEntry& entry(const QString& name) const;
    // The menu that is never in the bar.
    QMenu* nicks() const { return m_popups.value(QStringLiteral("mnu_nicks")); }

private:
    QMenuBar* m_bar;
    QHash<QString, QMenu*> m_popups;
    QHash<QString, ActionEntry*> m_entries;
};
