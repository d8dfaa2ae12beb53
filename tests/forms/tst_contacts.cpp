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

    std::optional<Buddies> buddies;

    void load()
    {
        buddies.emplace(BuddyList::Desk{handlers, server, boxes, store, queries});
        buddies->Show();
    }
    void unload()
    {
        buddies->Unload();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
};

// The one buddy list that is loaded, if any.
BuddyList* form()
{
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (auto* list = qobject_cast<BuddyList*>(widget))
            return list;
    }
    return nullptr;
}

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
            u"?watched |?sent |watch Ann|watch Bob|unload|load|?watched ,Ann,Bob|watch Late|load|"
            "?watched ,Ann,Bob|?kept 3 Bob|press cmdClear|unload|load|?watched |?kept 0 Bob"_s);
        row("answers replace the list whole",
            u"unload|offline|?loaded no|online Ann  Bob |?loaded unseen|?there Ann,Bob|online Cy|"
            "?there Cy|offline|?there "_s);
        const QString asked = u"|?boxes Whois Online: Enter a nickname to add"_s;
        const QString ann = u"press cmdClear|watch Ann|press Command2|answer "_s;
        row("added without blanks, while connecting",
            ann + " B ob |state 6|press cmdAdd|?watched Ann,Bob|?sent ISON Ann Bob "_L1 + asked);
        row("not connected", ann + "Bob|state 0|press cmdAdd|?watched Ann,Bob|?sent "_L1);
        row("known in other case", ann + "aNN|press cmdAdd|?watched Ann|?sent "_L1 + asked);
        row("only blanks", ann + "  |press cmdAdd|?watched Ann|?sent "_L1);
        row("asked by hand", u"watch Ann|press cmdRefresh|?sent ISON  Ann "_s);
        row("every second tick asks", u"press cmdClear|tick 4|?sent |watch |watch Ann|tick 5|"
                                      "?sent ISON  Ann \nISON  Ann |?polls 60000"_s);
        row("removed", u"?view Online|press Command2|?view Setup|watch Ann|press cmdRem|"
                       "?watched ,Ann|select 0|press cmdRem|?watched Ann|press Command1|"
                       "?view Online|press cmdClear|?watched "_s);
        row("a double click talks", u"online Ann Bob|use 0|?talks Ann|?fatal "_s);
        row("a double click on one who is blocked ends the program",
            u"blocked BOB|online Ann Bob|use 1|?talks |?fatal Run-time error '13':\n\nType mismatch"_s);

        // The ignore list; one has to select somebody in the room first.
        const QString question = u"?boxes IgnoreList: Add a nickname to IgnoreList"_s;
        const QString stays = u"|?rows old - Blocked|?sent |?hint 0"_s;
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
              u"?boxes |?rows old - Blocked|?sent |?hint 1"_s);
        block("twice", 0, "old", done(u"old"_s));
        block("oneself in other case", 1, "mE", done(u"mE"_s));
        block("operator", 0, "oPer", question + " Block: You can't block a Operator"_L1 + stays);
        row("a row is selected", "room 0|blocked old|mark 0|answer Eve|block cmdAdd|"_L1 +
                                     question + " Block: Are you trying to add same nick?"_L1 +
                                     stays);
        row("closing keeps the rows",
            u"blocked a|blocked b|close|?hint 0|block cmdRemove|?rows a - Blocked,b - Blocked|"
            "mark 0|block cmdRemove|?rows b - Blocked|open a|?talks a|block cmdClear|?rows |?sent "_s);
    }
    void uses()
    {
        QFETCH(QString, script);
        Desk desk;
        desk.variables.MyNick = u"Me"_s;
        for (const QString& nick : {u"@Oper"_s, u"Me"_s})
            desk.room.nicks.AddNick(nick);
        desk.load();
        ListBox& rows = desk.ignored.List1();
        const auto list = [&](const char* name) -> ListBoxWidget& {
            return *form()->findChild<ListBoxWidget*>(QLatin1StringView(name));
        };
        const auto press = [](QWidget& of, const QString& name) {
            QTest::mouseClick(of.findChild<xpButton*>(name), Qt::LeftButton);
        };
        const Script player(
            {
                {u"watch"_s, [&](const QString& nick) { list("lstSetup").AddItem(nick); }},
                {u"load"_s, [&](auto) { desk.load(); }},
                {u"unload"_s, [&](auto) { desk.unload(); }},
                {u"answer"_s, [&](const QString& text) { desk.boxes.answerText = text; }},
                {u"state"_s, [&](const QString& state) { desk.server.state = state.toInt(); }},
                {u"press"_s, [&](const QString& name) { press(*form(), name); }},
                {u"tick"_s,
                 [&](const QString& times) {
                     desk.server.sent.clear();
                     for (int tick = 0; tick < times.toInt(); ++tick)
                         QMetaObject::invokeMethod(form()->findChild<QTimer*>(u"tmrRefresh"_s),
                                                   "timeout");
                 }},
                {u"select"_s,
                 [&](const QString& row) { list("lstSetup").setListIndex(row.toInt()); }},
                {u"online"_s, [&](const QString& nicks) { desk.buddies->AddUsers(nicks); }},
                {u"offline"_s, [&](auto) { desk.buddies->clearOnline(); }},
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
                {u"there"_s, [&] { return rowsOf(list("lstNicks")); }},
                {u"loaded"_s,
                 [&]() -> QString {
                     const QString seen = desk.buddies->Visible() ? u"seen"_s : u"unseen"_s;
                     return form() ? seen : u"no"_s;
                 }},
                {u"kept"_s,
                 [&]() -> QString {
                     return desk.store.GetSetting(u"Listsetup"_s, u"Sect"_s, u"boty1"_s) + u' ' +
                            desk.store.GetSetting(u"ListSetup"_s, u"Sect"_s, u"boty12"_s);
                 }},
                {u"sent"_s, [&] { return desk.server.sent.join(u'\n'); }},
                {u"boxes"_s, [&] { return desk.boxes.shown.join(u' ').replace(u'|', ": "_L1); }},
                {u"fatal"_s, [&] { return desk.fatal.join(u' '); }},
                {u"polls"_s,
                 [&] {
                     const auto* timer = form()->findChild<QTimer*>(u"tmrRefresh"_s);
                     return timer->isActive() ? QString::number(timer->interval()) : QString();
                 }},
                {u"hint"_s,
                 [&] {
                     return QString::number(
                         desk.ignored.findChild<QLabel*>(u"whatToDo"_s)->isVisible());
                 }},
                {u"talks"_s,
                 [&] {
                     QStringList nicks;
                     for (const auto& window : desk.windows.windows)
                         nicks += window->QueryNick;
                     return nicks.join(u' ');
                 }},
                {u"view"_s, [&] { return form()->findChild<QLabel*>(u"lblWhich"_s)->text(); }},
            });
        player.play(script);
    }
};

QTEST_MAIN(tst_contacts)
#include "tst_contacts.moc"
