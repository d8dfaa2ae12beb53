#include "contacts/BuddyList.h"

#include "controls/FormControls.h"
#include "controls/ListBoxWidget.h"
#include "controls/xpButton.h"
#include "platform/Handlers.h"
#include "talk/QueryTable.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace {

using namespace Qt::StringLiterals;

constexpr int refreshMilliseconds = 60000;
constexpr double headingScale = 1.3; // of ordinary text
constexpr QSize firstSize{400, 360};

ListBoxWidget* newList(const QString& name, const QString& accessibleName, QWidget* parent)
{
    auto* list = new ListBoxWidget(ListBoxWidget::Order::AsAdded, parent);
    list->setObjectName(name);
    list->setAccessibleName(accessibleName);
    return list;
}

} // namespace

BuddyList::BuddyList(const Desk& desk)
    : lblWhich(makeHeading(makeLabel(u"lblWhich"_s, {}, this), headingScale))
    , lstNicks(newList(u"lstNicks"_s, u"Online"_s, this))
    , lstSetup(newList(u"lstSetup"_s, u"Setup"_s, this))
    , Command1(makeButton(u"Command1"_s, u"View"_s, this))
    , Command2(makeButton(u"Command2"_s, u"Setup"_s, this))
    , cmdAdd(makeButton(u"cmdAdd"_s, u"Add"_s, this))
    , cmdRem(makeButton(u"cmdRem"_s, u"Remove"_s, this))
    , cmdClear(makeButton(u"cmdClear"_s, u"Clear"_s, this))
    , cmdRefresh(makeButton(u"cmdRefresh"_s, u"Refresh"_s, this))
    , m_names({*lstSetup, desk.dialogs, desk.store})
    , m_polling(m_names, desk.server)
{
    setWindowTitle(u"View Whois Online"_s);
    tmrRefresh.setObjectName(u"tmrRefresh"_s);
    tmrRefresh.setParent(this);
    tmrRefresh.setInterval(refreshMilliseconds);
    tmrRefresh.start();
    new ButtonKeys(this);
    arrange();
    connectControls(desk);
    lstNicks->setHint(u"Your buddies stand here while they are on the network. Setup is where you "
                      "choose them."_s);
    lstSetup->setHint(u"The names that are looked for. Add asks for one."_s);
    showSetup(false);
}

void BuddyList::connectControls(const Desk& desk)
{
    const Handlers& handlers = desk.handlers;
    QueryTable& queries = desk.queries;
    handlers.connect(&tmrRefresh, &QTimer::timeout, this, [this] { m_polling.tmrRefresh_Timer(); });
    handlers.connect(cmdAdd, &xpButton::Click, this, [this] {
        if (m_names.add())
            m_polling.cmdRefresh_Click();
    });
    handlers.connect(cmdRem, &xpButton::Click, this, [this] { m_names.removeSelected(); });
    handlers.connect(cmdClear, &xpButton::Click, this, [this] { lstSetup->Clear(); });
    handlers.connect(cmdRefresh, &xpButton::Click, this, [this] { m_polling.cmdRefresh_Click(); });
    handlers.connect(Command1, &xpButton::Click, this, [this] { showSetup(false); });
    handlers.connect(Command2, &xpButton::Click, this, [this] { showSetup(true); });
    handlers.connect(lstNicks, &ListBoxWidget::DblClick, this, [this, &queries] {
        // A click beside the rows names nobody.
        if (lstNicks->ListIndex() != -1)
            queries.talkTo(lstNicks->Text());
    });
}

void BuddyList::arrange()
{
    auto* top = new QHBoxLayout;
    top->setSpacing(formSpacing);
    top->addWidget(lblWhich, 1);
    top->addWidget(Command1);
    top->addWidget(Command2);

    auto* bottom = new QHBoxLayout;
    bottom->setSpacing(formSpacing);
    bottom->addWidget(cmdAdd);
    bottom->addWidget(cmdRem);
    bottom->addStretch();
    bottom->addWidget(cmdClear);
    bottom->addWidget(cmdRefresh);

    auto* layout = new QVBoxLayout(this);
    setFormMargins(layout);
    layout->addLayout(top);
    layout->addWidget(lstNicks, 1);
    layout->addWidget(lstSetup, 1);
    layout->addLayout(bottom);

    QWidget* last = Command1;
    for (QWidget* next : std::initializer_list<QWidget*>{Command2, lstNicks, lstSetup, cmdAdd,
                                                         cmdRem, cmdClear, cmdRefresh}) {
        setTabOrder(last, next);
        last = next;
    }
    setMinimumWidth(layout->minimumSize().width()); // of all buttons, those now hidden included
    resize(firstSize);
}

// One list lies over the other; the covered one takes no keys.
void BuddyList::showSetup(bool setup)
{
    cmdAdd->setVisible(setup);
    cmdRem->setVisible(setup);
    lstSetup->setVisible(setup);
    lstNicks->setVisible(!setup);
    lblWhich->setText(setup ? u"Setup"_s : u"Online"_s);
}

void BuddyList::Form_Load()
{
    m_polling.cmdRefresh_Click(); // nothing is listed yet, so nothing goes out
    m_names.load();
}

void BuddyList::AddUsers(const QString& names)
{
    clearOnline();
    for (const QString& nick : names.split(u' ', Qt::SkipEmptyParts))
        lstNicks->AddItem(nick);
}

void BuddyList::clearOnline()
{
    lstNicks->Clear();
}

Buddies::Buddies(const BuddyList::Desk& desk)
    : m_form([desk] { return std::make_unique<BuddyList>(desk); })
{
}

void Buddies::clearOnline()
{
    // A list that is not loaded shows nobody; loading it now would start its polling.
    if (m_form.isLoaded())
        m_form().clearOnline();
}
