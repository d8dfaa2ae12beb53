#include "contacts/IgnoreList.h"

#include "controls/ListBoxWidget.h"
#include "controls/xpButton.h"
#include "platform/Handlers.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace {

using namespace Qt::StringLiterals;

constexpr int margin = 12;
constexpr int spacing = 8;
constexpr QSize firstSize{380, 320};

} // namespace

IgnoreList::IgnoreList(const Desk& desk)
    : m_list1(new ListBoxWidget(ListBoxWidget::Order::AsAdded, this))
    , m_rows({*m_list1, desk.variables, desk.room, desk.server, desk.dialogs})
{
    setWindowTitle(u"IgnoreList - Add Chatters to avoid chats!"_s);
    m_list1->setObjectName(u"List1"_s);
    m_list1->setAccessibleName(u"Blocked chatters"_s);
    xpButton* cmdAdd = newButton(u"cmdAdd"_s, u"Add"_s);
    xpButton* cmdRemove = newButton(u"cmdRemove"_s, u"Remove"_s);
    xpButton* cmdClear = newButton(u"cmdClear"_s, u"Clear"_s);
    new ButtonKeys(this);

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(spacing);
    buttons->addWidget(cmdAdd);
    buttons->addWidget(cmdRemove);
    buttons->addStretch();
    buttons->addWidget(cmdClear);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->setSpacing(spacing);
    layout->addWidget(m_list1, 1);
    layout->addLayout(buttons);
    resize(firstSize);
    cmdAdd->setFocus(); // a row with the focus looks selected, and a selected row is in the way

    desk.handlers.connect(cmdAdd, &xpButton::Click, this, [this] { m_rows.cmdAdd_Click(); });
    desk.handlers.connect(cmdRemove, &xpButton::Click, this, [this] { m_rows.cmdRemove_Click(); });
    desk.handlers.connect(cmdClear, &xpButton::Click, this, [this] { m_list1->Clear(); });
}

xpButton* IgnoreList::newButton(const QString& name, const QString& caption)
{
    auto* button = new xpButton(caption, xpButton::Big, this);
    button->setObjectName(name);
    button->setAccessibleName(caption);
    return button;
}

ListBox& IgnoreList::List1()
{
    return *m_list1;
}

void IgnoreList::closeEvent(QCloseEvent* event)
{
    event->ignore();
    hide();
}
