#include "common/SessionVariables.h"
#include "contacts/BuddyList.h"
#include "contacts/IgnoreList.h"
#include "controls/ActionEntry.h"
#include "controls/xpButton.h"
#include "platform/Handlers.h"
#include "platform/Resources.h"
#include "room/Room.h"
#include "settings/UserStore.h"
#include "support/RecordingPorts.h"
#include "support/StandIns.h"
#include "talk/QueryTable.h"

#include <QLabel>
#include <QTemporaryDir>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

QStringList rowsOf(const ListBox& list)
{
    QStringList rows;
    for (int row = 0; row < list.ListCount(); ++row)
        rows += list.List(row);
    return rows;
}

void click(QWidget& form, const QString& name)
{
    QTest::mouseClick(form.findChild<xpButton*>(name), Qt::LeftButton);
}

void doubleClick(ListBoxWidget& list, int row)
{
    const QPoint place = list.visualItemRect(list.item(row)).center();
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, place);
}

struct Desk
{
    Server server;
    ScriptedDialogs boxes;
    QTemporaryDir folder;
    UserStore store{folder.path()};
    SessionVariables variables;
    RoomWindow window;
    Room room{window};
    QStringList fatal;
    Handlers handlers{[this](const QString& message) { fatal += message; }};
    ActionEntry pmNo;
    ActionEntry pmYes;
    ActionEntry blockedEntry;
    Journal journal;
    RecordingQueries windows{journal};
    IgnoreList ignored{{handlers, variables, room, server, boxes}};
    QueryTable queries{
        windows, {pmNo, pmYes, blockedEntry}, [this]() -> ListBox& { return ignored.List1(); }};

    std::unique_ptr<BuddyList> buddyList()
    {
        auto form =
            std::make_unique<BuddyList>(BuddyList::Desk{handlers, server, boxes, store, queries});
        form->Form_Load();
        return form;
    }
};

} // namespace

class tst_contacts : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { loadResources(); }

    // In the order of making: the title, the buttons, the names and hints of the lists.
    void captions()
    {
        Desk desk;
        const auto words = [](const QWidget& form) {
            QStringList texts{form.windowTitle()};
            for (const xpButton* button : form.findChildren<xpButton*>())
                texts += button->Caption();
            for (const ListBoxWidget* list : form.findChildren<ListBoxWidget*>())
                texts += {list->accessibleName(), list->hint()};
            return texts.join(u'|');
        };
        QCOMPARE(words(*desk.buddyList()),
                 u"View Whois Online|View|Setup|Add|Remove|Clear|Refresh|Online|Your buddies stand "
                 "here while they are on the network. Setup is where you choose them.|Setup|The "
                 "names that are looked for. Add asks for one."_s);
        QCOMPARE(words(desk.ignored),
                 u"IgnoreList - Add Chatters to avoid chats!|Add|Remove|Clear|Blocked "
                 "chatters|Nobody is blocked. Choose a chatter in the room's list and click Add "
                 "here, or take Block Conversation in the chatter's own menu."_s);
        QCOMPARE(desk.ignored.findChild<QLabel*>(u"whatToDo"_s)->text(),
                 u"First choose a chatter in the room's list. Then Add asks for the name."_s);
    }

    void watchedNamesSurviveOnlyAnUnload()
    {
        Desk desk;
        {
            const auto form = desk.buddyList();
            auto* setup = form->findChild<ListBoxWidget*>(u"lstSetup"_s);
            QCOMPARE(rowsOf(*setup), QStringList{QString()}); // the row of the first use
            QCOMPARE(desk.server.sent, QStringList());
            for (const QString& nick : {u"Ann"_s, u"Bob"_s})
                setup->AddItem(nick);
            form->Form_Unload();
            setup->AddItem(u"Late"_s);
        }
        const auto form = desk.buddyList();
        auto* setup = form->findChild<ListBoxWidget*>(u"lstSetup"_s);
        QCOMPARE(rowsOf(*setup), QStringList({QString(), u"Ann"_s, u"Bob"_s}));
        setup->Clear();
        form->Form_Unload();
        QCOMPARE(rowsOf(*desk.buddyList()->findChild<ListBoxWidget*>(u"lstSetup"_s)),
                 QStringList());
        QCOMPARE(desk.store.GetSetting(u"ListSetup"_s, u"Sect"_s, u"boty12"_s), u"Bob"_s);
    }

    void adding_data()
    {
        QTest::addColumn<QString>("answer");
        QTest::addColumn<int>("state");
        QTest::addColumn<bool>("adds");
        QTest::addColumn<bool>("asks"); // the server, at once

        const int connected = Winsock::Connected;
        QTest::newRow("new") << u"Bob"_s << connected << true << true;
        QTest::newRow("blanks go") << u" B ob "_s << connected << true << true;
        QTest::newRow("connecting") << u"Bob"_s << int(Winsock::Connecting) << true << true;
        QTest::newRow("not connected") << u"Bob"_s << int(Winsock::Closed) << true << false;
        QTest::newRow("other case") << u"aNN"_s << connected << false << false;
        QTest::newRow("only blanks") << u"  "_s << connected << false << false;
    }
    void adding()
    {
        QFETCH(QString, answer);
        QFETCH(int, state);
        QFETCH(bool, adds);
        QFETCH(bool, asks);
        Desk desk;
        const auto form = desk.buddyList();
        form->show();
        auto* setup = form->findChild<ListBoxWidget*>(u"lstSetup"_s);
        setup->Clear();
        setup->AddItem(u"Ann"_s);
        desk.server.state = state;
        desk.boxes.answerText = answer;
        click(*form, u"Command2"_s);
        click(*form, u"cmdAdd"_s);
        QCOMPARE(desk.boxes.shown, QStringList{u"Whois Online|Enter a nickname to add"_s});
        QCOMPARE(rowsOf(*setup).join(u' '), adds ? u"Ann Bob"_s : u"Ann"_s);
        QCOMPARE(desk.server.sent.join(u'|'), asks ? u"ISON Ann Bob "_s : QString());
    }

    void everySecondTickPolls()
    {
        Desk desk;
        ListBoxWidget setup(ListBoxWidget::Order::AsAdded);
        const WatchedNames names({setup, desk.boxes, desk.store});
        BuddyPolling polling(names, desk.server);
        for (int tick = 0; tick < 4; ++tick)
            polling.tmrRefresh_Timer();
        QCOMPARE(desk.server.sent, QStringList()); // an empty list asks nothing
        setup.AddItem({});
        setup.AddItem(u"Ann"_s);
        for (int tick = 0; tick < 5; ++tick)
            polling.tmrRefresh_Timer();
        QCOMPARE(desk.server.sent, QStringList({u"ISON  Ann "_s, u"ISON  Ann "_s}));

        const auto form = desk.buddyList();
        auto* timer = form->findChild<QTimer*>(u"tmrRefresh"_s);
        QVERIFY(timer->isActive());
        QCOMPARE(timer->interval(), 60000);
    }

    void oneListLiesOverTheOther()
    {
        Desk desk;
        const auto form = desk.buddyList();
        form->show();
        const auto shown = [&form] {
            QStringList names{form->findChild<QLabel*>(u"lblWhich"_s)->text()};
            for (const QString& name : {u"lstNicks"_s, u"lstSetup"_s, u"cmdAdd"_s, u"cmdRem"_s}) {
                if (form->findChild<QWidget*>(name)->isVisible())
                    names += name;
            }
            return names;
        };
        const QStringList online{u"Online"_s, u"lstNicks"_s};
        QCOMPARE(shown(), online);
        click(*form, u"Command2"_s);
        QCOMPARE(shown(), QStringList({u"Setup"_s, u"lstSetup"_s, u"cmdAdd"_s, u"cmdRem"_s}));

        auto* setup = form->findChild<ListBoxWidget*>(u"lstSetup"_s);
        setup->AddItem(u"Ann"_s);
        click(*form, u"cmdRem"_s); // no row is selected
        QCOMPARE(setup->ListCount(), 2);
        setup->setListIndex(0);
        click(*form, u"cmdRem"_s);
        QCOMPARE(rowsOf(*setup), QStringList{u"Ann"_s});

        click(*form, u"Command1"_s);
        QCOMPARE(shown(), online);
        click(*form, u"cmdClear"_s); // clears the watched names, whichever list is on view
        QCOMPARE(setup->ListCount(), 0);
    }

    void answersReplaceTheListWhole()
    {
        Desk desk;
        Buddies buddies({desk.handlers, desk.server, desk.boxes, desk.store, desk.queries});
        const auto names = [] {
            QStringList rows;
            for (const QWidget* widget : QApplication::topLevelWidgets()) {
                if (qobject_cast<const BuddyList*>(widget))
                    rows = rowsOf(*widget->findChild<ListBoxWidget*>(u"lstNicks"_s));
            }
            return rows.join(u' ');
        };
        buddies.clearOnline(); // of a list that nobody has asked for yet
        QVERIFY(desk.folder.isValid() && names().isEmpty());
        buddies.AddUsers(u"Ann  Bob "_s);
        QVERIFY(!buddies.Visible());
        QCOMPARE(names(), u"Ann Bob"_s);
        buddies.AddUsers(u"Cy"_s);
        QCOMPARE(names(), u"Cy"_s);
        buddies.clearOnline();
        QCOMPARE(names(), QString());
        buddies.Unload();
        QCOMPARE(desk.store.GetSetting(u"Listsetup"_s, u"Sect"_s, u"boty1"_s), u"1"_s);
    }

    void aDoubleClickTalksOrEndsTheProgram()
    {
        Desk desk;
        const auto form = desk.buddyList();
        form->show();
        form->AddUsers(u"Ann Bob"_s);
        desk.ignored.List1().AddItem(u"BOB - Blocked"_s);
        auto& online = *form->findChild<ListBoxWidget*>(u"lstNicks"_s);
        doubleClick(online, 0);
        QCOMPARE(desk.queries.FindQuery(u"Ann"_s), 1);
        QCOMPARE(desk.fatal, QStringList());
        doubleClick(online, 1);
        QCOMPARE(desk.fatal, QStringList{u"Run-time error '13':\n\nType mismatch"_s});
        QCOMPARE(desk.queries.FindQuery(u"Bob"_s), -1);
    }

    void blocking_data()
    {
        QTest::addColumn<QString>("answer");
        QTest::addColumn<int>("roomRow");
        QTest::addColumn<int>("ignoreRow");
        QTest::addColumn<QString>("refusal"); // "-": it does not even ask

        const QString asked;
        QTest::newRow("nobody selected in the room") << u"Eve"_s << -1 << -1 << u"-"_s;
        QTest::newRow("fine") << u"Eve"_s << 0 << -1 << asked;
        QTest::newRow("twice") << u"old"_s << 0 << -1 << asked;
        QTest::newRow("a row is selected")
            << u"Eve"_s << 0 << 0 << u"Block|Are you trying to add same nick?"_s;
        QTest::newRow("oneself") << u"Me"_s << 1 << -1 << u"Block|You can't block yourself?"_s;
        QTest::newRow("oneself in other case") << u"mE"_s << 1 << -1 << asked;
        QTest::newRow("operator") << u"oPer"_s << 0 << -1 << u"Block|You can't block a Operator"_s;
        QTest::newRow("half-operator")
            << u"Half"_s << 0 << -1 << u"Block|You can't block a Operator"_s;
    }
    void blocking()
    {
        QFETCH(QString, answer);
        QFETCH(int, roomRow);
        QFETCH(int, ignoreRow);
        QFETCH(QString, refusal);
        Desk desk;
        desk.variables.MyNick = u"Me"_s;
        for (const QString& nick : {u"@Oper"_s, u"%Half"_s, u"Me"_s})
            desk.room.nicks.AddNick(nick);
        desk.window.nicks.setListIndex(roomRow);
        ListBox& rows = desk.ignored.List1();
        rows.AddItem(u"old - Blocked"_s);
        rows.setListIndex(ignoreRow);
        desk.boxes.answerText = answer;
        desk.ignored.show();
        click(desk.ignored, u"cmdAdd"_s);

        QStringList shown{u"IgnoreList|Add a nickname to IgnoreList"_s};
        if (refusal == u"-"_s)
            shown.clear();
        else if (!refusal.isEmpty())
            shown += refusal;
        QCOMPARE(desk.boxes.shown, shown);
        // Where there is no question, it says what has to be done first.
        QCOMPARE(desk.ignored.findChild<QLabel*>(u"whatToDo"_s)->isVisible(), refusal == u"-"_s);
        if (refusal.isEmpty()) {
            QCOMPARE(rowsOf(rows), QStringList({u"old - Blocked"_s, answer + u" - Blocked"_s}));
            QCOMPARE(desk.server.sent,
                     QStringList{u"PRIVMSG "_s + answer +
                                 u" \3"
                                 u"4\2You've been ignored by Me[Tarnwyk Messenger Zephyr]"_s});
        } else {
            QCOMPARE(rowsOf(rows), QStringList{u"old - Blocked"_s});
            QCOMPARE(desk.server.sent, QStringList());
        }
    }

    void closingKeepsTheRows()
    {
        Desk desk;
        IgnoreList& form = desk.ignored;
        for (const QString& row : {u"a - Blocked"_s, u"b - Blocked"_s})
            form.List1().AddItem(row);
        form.Show();
        form.close();
        QVERIFY(!form.isVisible());
        QCOMPARE(form.List1().ListCount(), 2);
        form.Show();
        click(form, u"cmdRemove"_s); // no row is selected
        QCOMPARE(form.List1().ListCount(), 2);
        form.List1().setListIndex(0);
        click(form, u"cmdRemove"_s);
        QCOMPARE(rowsOf(form.List1()), QStringList{u"b - Blocked"_s});
        QCOMPARE(desk.queries.OpenQuery(u"a"_s, {}), 1); // talks again at once
        click(form, u"cmdClear"_s);
        QCOMPARE(form.List1().ListCount(), 0);
        QCOMPARE(desk.server.sent, QStringList());
    }
};

QTEST_MAIN(tst_contacts)
#include "tst_contacts.moc"
