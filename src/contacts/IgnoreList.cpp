#include "contacts/IgnoreList.h"

#include "common/SessionVariables.h"
#include "controls/FormControls.h"
#include "controls/ListBoxWidget.h"
#include "controls/xpButton.h"
#include "platform/Dialogs.h"
#include "platform/Handlers.h"
#include "room/Room.h"
#include "talk/Blocking.h"
#include "wire/LineSink.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QVBoxLayout>

namespace {

using namespace Qt::StringLiterals;

constexpr QSize firstSize{380, 320};

} // namespace

IgnoreList::IgnoreList(const Desk& desk)
    : m_desk(desk)
    , m_list1(new ListBoxWidget(ListBoxWidget::Order::AsAdded, this))
    , m_whatToDo(makeLabel(
          u"whatToDo"_s,
          u"First choose a chatter in the room's list. Then Add asks for the name."_s, this))
    , m_rows(*m_list1, desk.variables, desk.room)
{
    setWindowTitle(u"IgnoreList - Add Chatters to avoid chats!"_s);
    m_list1->setObjectName(u"List1"_s);
    m_list1->setAccessibleName(u"Blocked chatters"_s);
    m_list1->setHint(
        u"Nobody is blocked. Choose a chatter in the room's list and click Add here, or "
        "take Block Conversation in the chatter's own menu."_s);
    xpButton* cmdAdd = makeButton(u"cmdAdd"_s, u"Add"_s, this);
    xpButton* cmdRemove = makeButton(u"cmdRemove"_s, u"Remove"_s, this);
    xpButton* cmdClear = makeButton(u"cmdClear"_s, u"Clear"_s, this);
    new ButtonKeys(this);

    m_whatToDo->setWordWrap(true);
    m_whatToDo->hide();

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(formSpacing);
    buttons->addWidget(cmdAdd);
    buttons->addWidget(cmdRemove);
    buttons->addStretch();
    buttons->addWidget(cmdClear);
    auto* layout = new QVBoxLayout(this);
    setFormMargins(layout);
    layout->addWidget(m_list1, 1);
    layout->addWidget(m_whatToDo);
    layout->addLayout(buttons);
    resize(firstSize);
    cmdAdd->setFocus(); // a row with the focus looks selected, and a selected row is in the way

    desk.handlers.connect(cmdAdd, &xpButton::Click, this, [this] { cmdAdd_Click(); });
    desk.handlers.connect(cmdRemove, &xpButton::Click, this, [this] { m_rows.removeSelected(); });
    desk.handlers.connect(cmdClear, &xpButton::Click, this, [this] { m_list1->Clear(); });
}

ListBox& IgnoreList::List1()
{
    return *m_list1;
}

void IgnoreList::cmdAdd_Click()
{
    // Without a selection in the room there is no question, whatever the answer would be.
    const bool somebody = m_desk.room.form.lstNicks().ListIndex() != -1;
    m_whatToDo->setVisible(!somebody);
    if (!somebody)
        return;
    const QString nick =
        m_desk.dialogs.InputBox(u"Add a nickname to IgnoreList"_s, u"IgnoreList"_s);
    if (nick.isEmpty())
        return;
    if (const QString text = m_rows.refusal(nick); !text.isEmpty())
        return m_desk.dialogs.MsgBox(text, u"Block"_s);
    m_rows.add(nick);
    m_desk.server.SendData(
        ignoredNotice(nick, m_desk.variables.MyNick, "[Tarnwyk Messenger Zephyr]"_L1));
}

void IgnoreList::closeEvent(QCloseEvent* event)
{
    event->ignore();
    hide();
}
