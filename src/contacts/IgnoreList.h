#pragma once

#include "contacts/IgnoreRows.h"
#include "platform/Form.h"

class Handlers;
class ListBoxWidget;
class QLabel;
class xpButton;

// The window with the nicks that are refused in private talk. Closing it only hides it: its rows
// are the list, and nothing else keeps them.
class IgnoreList final : public Form
{
    Q_OBJECT
public:
    struct Desk
    {
        const Handlers& handlers;
        const SessionVariables& variables;
        const Room& room;
        LineSink& server;
        Dialogs& dialogs;
    };

    explicit IgnoreList(const Desk& desk);

    ListBox& List1();
    void cmdAdd_Click() { m_rows.cmdAdd_Click(); }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    ListBoxWidget* m_list1;
    QLabel* m_whatToDo;
    IgnoreRows m_rows;
};
