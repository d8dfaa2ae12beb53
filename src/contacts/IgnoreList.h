#pragma once

#include "contacts/IgnoreRows.h"
#include "platform/Form.h"

class Dialogs;
class Handlers;
class LineSink;
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

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    // Asks for a nick, blocks it and tells it so.
    void cmdAdd_Click();

    Desk m_desk;
    ListBoxWidget* m_list1;
    QLabel* m_whatToDo;
    IgnoreRows m_rows;
};
