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
#include "support/Script.h"
#include "talk/QueryTable.h"

#include <QtTest>
#include <QtWidgets>

using namespace Qt::StringLiterals;

namespace {

QString rowsOf(const ListBox& list)
{
    QStringList rows;
    for (int row = 0; row < list.ListCount(); ++row)
        rows += list.List(row);
    return rows.join(u',');
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

// The buddy list and the ignore list.
class tst_contacts : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { loadResources(); }

    void uses_data()
    {
        const Scenes row;

        row("watched names survive only an unload",
            u"?watched |?sent |watch Ann|watch Bob|keep|watch Late|again|?watched ,Ann,Bob|"
            "press cmdClear|keep|again|?watched |?kept Bob"_s);
        const QString asked = u"|?boxes Whois Online: Enter a nickname to add"_s;
        const QString ann = u"press cmdClear|watch Ann|press Command2|answer "_s;
        row("added", ann + "Bob|press cmdAdd|?watched Ann,Bob|?sent ISON Ann Bob "_L1 + asked);
        row("blanks go", ann + " B ob |press cmdAdd|?watched Ann,Bob|?sent ISON Ann Bob "_L1);
        row("connecting", ann + "Bob|state 6|press cmdAdd|?watched Ann,Bob|?sent ISON Ann Bob "_L1);
        row("not connected", ann + "Bob|state 0|press cmdAdd|?watched Ann,Bob|?sent "_L1);
        row("known in other case", ann + "aNN|press cmdAdd|?watched Ann|?sent "_L1 + asked);
        row("only blanks", ann + "  |press cmdAdd|?watched Ann|?sent "_L1);
        row("asked by hand", u"watch Ann|press cmdRefresh|?sent ISON  Ann "_s);
        row("every second tick asks", u"press cmdClear|tick 4|?sent |watch |watch Ann|tick 5|"
                                      "?sent ISON  Ann \nISON  Ann |?polls 60000"_s);
        row("one list lies over the other",
            u"?lies Online lstNicks|press Command2|?lies Setup lstSetup cmdAdd cmdRem|watch Ann|"
            "press cmdRem|?watched ,Ann|select 0|press cmdRem|?watched Ann|press Command1|"
            "?lies Online lstNicks|press cmdClear|?watched "_s);
        row("a double click talks", u"online Ann Bob|use 0|?talks Ann|?fatal "_s);
        row("a double click on one who is blocked ends the program",
            u"blocked BOB|online Ann Bob|use 1|?talks |?fatal Run-time error '13':\n\nType mismatch"_s);

        // The ignore list; one has to select somebody in the room first.
        const QString question = u"?boxes IgnoreList: Add a nickname to IgnoreList"_s;
        const QString stays = u"|?rows old - Blocked|?sent |?hint no"_s;
        const auto block = [&](const char* name, int roomRow, const char* nick,
                               const QString& outcome) {
            row(name, "room "_L1 + QString::number(roomRow) + "|blocked old|answer "_L1 +
                          QLatin1StringView(nick) + "|block cmdAdd|"_L1 + outcome);
        };
        const auto done = [&](const QString& nick) -> QString {
            return question + "|?rows old - Blocked,"_L1 + nick + " - Blocked|?sent PRIVMSG "_L1 +
                   nick + u" \3" + u"4\2You've been ignored by Me[Tarnwyk Messenger Zephyr]"_s;
        };
        block("nobody selected in the room", -1, "Eve",
              u"?boxes |?rows old - Blocked|?sent |?hint yes"_s);
        block("blocked", 0, "Eve", done(u"Eve"_s));
        block("twice", 0, "old", done(u"old"_s));
        block("oneself in other case", 1, "mE", done(u"mE"_s));
        block("oneself", 1, "Me", question + " Block: You can't block yourself?"_L1 + stays);
        block("operator", 0, "oPer", question + " Block: You can't block a Operator"_L1 + stays);
        row("a row is selected", "room 0|blocked old|mark 0|answer Eve|block cmdAdd|"_L1 +
                                     question + " Block: Are you trying to add same nick?"_L1 +
                                     stays);
        row("closing keeps the rows",
            u"blocked a|blocked b|close|?hint no|block cmdRemove|?rows a - Blocked,b - Blocked|"
            "mark 0|block cmdRemove|?rows b - Blocked|open a|?talks a|block cmdClear|?rows |?sent "_s);
    }
    void uses()
    {
        QFETCH(QString, script);
        Desk desk;
        desk.variables.MyNick = u"Me"_s;
        for (const QString& nick : {u"@Oper"_s, u"Me"_s})
            desk.room.nicks.AddNick(nick);
        auto form = desk.buddyList();
        form->show();
        ListBox& rows = desk.ignored.List1();
        const auto list = [&](const char* name) -> ListBoxWidget& {
            return *form->findChild<ListBoxWidget*>(QLatin1StringView(name));
        };
        const auto press = [](QWidget& of, const QString& name) {
            QTest::mouseClick(of.findChild<xpButton*>(name), Qt::LeftButton);
        };
        const Script player(
            {
                {u"watch"_s, [&](const QString& nick) { list("lstSetup").AddItem(nick); }},
                {u"keep"_s, [&](auto) { form->Form_Unload(); }},
                {u"again"_s, [&](auto) { form = desk.buddyList(); }},
                {u"answer"_s, [&](const QString& text) { desk.boxes.answerText = text; }},
                {u"state"_s, [&](const QString& state) { desk.server.state = state.toInt(); }},
                {u"press"_s, [&](const QString& name) { press(*form, name); }},
                {u"tick"_s,
                 [&](const QString& times) {
                     desk.server.sent.clear();
                     for (int tick = 0; tick < times.toInt(); ++tick)
                         QMetaObject::invokeMethod(form->findChild<QTimer*>(u"tmrRefresh"_s),
                                                   "timeout");
                 }},
                {u"select"_s,
                 [&](const QString& row) { list("lstSetup").setListIndex(row.toInt()); }},
                {u"online"_s, [&](const QString& nicks) { form->AddUsers(nicks); }},
                {u"use"_s,
                 [&](const QString& row) {
                     ListBoxWidget& online = list("lstNicks");
                     const QPoint place = online.visualItemRect(online.item(row.toInt())).center();
                     QTest::mouseClick(online.viewport(), Qt::LeftButton, {}, place);
                     QTest::mouseDClick(online.viewport(), Qt::LeftButton, {}, place);
                 }},
                {u"room"_s,
                 [&](const QString& row) { desk.window.nicks.setListIndex(row.toInt()); }},
                {u"blocked"_s, [&](const QString& nick) { rows.AddItem(nick + " - Blocked"_L1); }},
                {u"mark"_s, [&](const QString& row) { rows.setListIndex(row.toInt()); }},
                {u"block"_s,
                 [&](const QString& name) {
                     desk.ignored.Show();
                     press(desk.ignored, name);
                 }},
                {u"close"_s,
                 [&](auto) {
                     desk.ignored.Show();
                     desk.ignored.close();
                     QVERIFY(!desk.ignored.isVisible());
                 }},
                {u"open"_s, [&](const QString& nick) { desk.queries.OpenQuery(nick, {}); }},
            },
            {
                {u"watched"_s, [&] { return rowsOf(list("lstSetup")); }},
                {u"rows"_s, [&] { return rowsOf(rows); }},
                {u"kept"_s,
                 [&] { return desk.store.GetSetting(u"ListSetup"_s, u"Sect"_s, u"boty12"_s); }},
                {u"sent"_s, [&] { return desk.server.sent.join(u'\n'); }},
                {u"boxes"_s, [&] { return desk.boxes.shown.join(u' ').replace(u'|', ": "_L1); }},
                {u"fatal"_s, [&] { return desk.fatal.join(u' '); }},
                {u"polls"_s,
                 [&] {
                     const auto* timer = form->findChild<QTimer*>(u"tmrRefresh"_s);
                     return timer->isActive() ? QString::number(timer->interval()) : QString();
                 }},
                {u"hint"_s,
                 [&] {
                     const auto* hint = desk.ignored.findChild<QLabel*>(u"whatToDo"_s);
                     return hint->isVisible() ? u"yes"_s : u"no"_s;
                 }},
                {u"talks"_s,
                 [&] {
                     QStringList nicks;
                     for (const auto& window : desk.windows.windows)
                         nicks += window->QueryNick;
                     return nicks.join(u' ');
                 }},
                {u"lies"_s,
                 [&] {
                     QString names = form->findChild<QLabel*>(u"lblWhich"_s)->text();
                     for (const char* name : {"lstNicks", "lstSetup", "cmdAdd", "cmdRem"}) {
                         if (form->findChild<QWidget*>(QLatin1StringView(name))->isVisible())
                             names += u' ' + QLatin1StringView(name);
                     }
                     return names;
                 }},
            });
        player.play(script);
    }

    void answersReplaceTheListWhole()
    {
        Desk desk;
        Buddies buddies({desk.handlers, desk.server, desk.boxes, desk.store, desk.queries});
        const auto names = [] {
            QString rows;
            for (const QWidget* widget : QApplication::topLevelWidgets()) {
                if (qobject_cast<const BuddyList*>(widget))
                    rows = rowsOf(*widget->findChild<ListBoxWidget*>(u"lstNicks"_s));
            }
            return rows;
        };
        buddies.clearOnline(); // of a list that nobody has asked for yet
        QVERIFY(desk.folder.isValid() && names().isEmpty());
        buddies.AddUsers(u"Ann  Bob "_s);
        QVERIFY(!buddies.Visible());
        QCOMPARE(names(), u"Ann,Bob"_s);
        buddies.AddUsers(u"Cy"_s);
        QCOMPARE(names(), u"Cy"_s);
        buddies.clearOnline();
        QCOMPARE(names(), QString());
        buddies.Unload();
        QCOMPARE(desk.store.GetSetting(u"Listsetup"_s, u"Sect"_s, u"boty1"_s), u"1"_s);
    }
};

QTEST_MAIN(tst_contacts)
#include "tst_contacts.moc"
