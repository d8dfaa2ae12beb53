#pragma once

#include "contacts/BuddyPolling.h"
#include "contacts/ContactList.h"
#include "contacts/WatchedNames.h"
#include "platform/Form.h"

#include <QTimer>

class Handlers;
class ListBoxWidget;
class QLabel;
class QueryTable;
class xpButton;

// The window with the watched nicknames and those of them that are on the network.
class BuddyList final : public Form
{
    Q_OBJECT
public:
    struct Desk
    {
        const Handlers& handlers;
        ServerLink& server;
        Dialogs& dialogs;
        const UserStore& store;
        QueryTable& queries;
    };

    explicit BuddyList(const Desk& desk);

    // The names of the last session come back; the next ones are saved only when it goes.
    void Form_Load() override;
    void Form_Unload() override { m_names.save(); }

    // The server's answer, names separated by blanks, replaces who is shown.
    void AddUsers(const QString& names);
    void Reload() { m_polling.cmdRefresh_Click(); }
    void clearOnline();

private:
    void connectControls(const Desk& desk);
    void arrange();
    void showSetup(bool setup);

    QLabel* lblWhich;
    ListBoxWidget* lstNicks;
    ListBoxWidget* lstSetup;
    xpButton* Command1;
    xpButton* Command2;
    xpButton* cmdAdd;
    xpButton* cmdRem;
    xpButton* cmdClear;
    xpButton* cmdRefresh;
    QTimer tmrRefresh;
    WatchedNames m_names;
    BuddyPolling m_polling;
};

// The buddy list as the rest of the program knows it: there at any time, loaded when needed.
class Buddies final : public ContactList
{
public:
    explicit Buddies(const BuddyList::Desk& desk);

    void AddUsers(const QString& names) override { m_form().AddUsers(names); }
    void clearOnline() override;
    bool Visible() const override { return m_form.isVisible(); }
    void Load() override { m_form(); }
    void Unload() override { m_form.Unload(); }

    void Show() { m_form().Show(); }
    void Reload() { m_form().Reload(); }

private:
    FormSlot<BuddyList> m_form;
};
