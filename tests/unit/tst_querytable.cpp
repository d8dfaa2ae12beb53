#include "common/RunTimeError.h"
#include "support/RecordingDesk.h"

#include <QTest>

using namespace Qt::StringLiterals;

// The table of private conversations.
class TestQuery final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void opening();
    void switches_data();
    void switches();
    void slotIsReused();
    void blocked_data();
    void blocked();
    void blockedByDigits();
    void thirtyFirst();
};

void TestQuery::opening()
{
    RecordingDesk desk;
    QCOMPARE(desk.queries.FindQuery(u"al"_s), -1);
    QVERIFY(!desk.queries.QueryVisible(u"al"_s));
    QCOMPARE(desk.queries.OpenQuery(u"Al"_s, u"Al!u@h!x"_s), 1);
    QCOMPARE(desk.queries.Queries(1).QueryHost, u"u@h!x"_s);
    QCOMPARE(desk.queries.OpenQuery(u"bo"_s, u"no.mark"_s), 2);
    QCOMPARE(desk.queries.Queries(2).QueryHost, u"no.mark"_s);
    desk.take();
    QCOMPARE(desk.queries.OpenQuery(u"AL"_s, u"x!other"_s), 0); // there already
    QCOMPARE(desk.take(), QStringList{u"Query1.SetFocus"_s});
    QCOMPARE(desk.queries.Queries(1).QueryHost, u"u@h!x"_s);
    QVERIFY(desk.queries.QueryVisible(u"aL"_s));
    QCOMPARE(desk.queries.FindQuery(u"BO"_s), 2);
}

void TestQuery::switches_data()
{
    QTest::addColumn<bool>("yes"); // the entry that says "Yes" is mnu_pm_no
    QTest::addColumn<bool>("no");
    QTest::addColumn<bool>("blocked");
    QTest::addColumn<bool>("opens");

    QTest::newRow("none") << false << false << false << true;
    QTest::newRow("yes") << true << false << false << true;
    QTest::newRow("no") << false << true << false << false;
    QTest::newRow("yes and blocked") << true << false << true << false;
    QTest::newRow("blocked alone") << false << false << true << true;
}

void TestQuery::switches()
{
    QFETCH(bool, yes);
    QFETCH(bool, no);
    QFETCH(bool, blocked);
    RecordingDesk desk;
    desk.mnu_pm_no.setChecked(yes);
    desk.mnu_pm_yes.setChecked(no);
    desk.mnu_blocked.setChecked(blocked);
    QTEST(desk.queries.OpenQuery(u"al"_s, {}) == 1, "opens");
    QTEST(desk.queries.QueryCount() == 1, "opens");
}

void TestQuery::slotIsReused()
{
    RecordingDesk desk;
    for (const QString& nick : {u"a"_s, u"b"_s, u"c"_s})
        desk.queries.OpenQuery(nick, {});
    desk.queries.Queries(2).Unload();
    QCOMPARE(desk.queries.FindQuery(u"b"_s), -1);
    desk.take();
    QCOMPARE(desk.queries.OpenQuery(u"d"_s, u"d!u@h"_s), 2);
    QCOMPARE(desk.take(),
             RecordingDesk::expected(
                 "Query2.Caption=d\nQuery2.lblNick=d\nQuery2.lblHost=u@h\nQuery2.Visible=true\n"
                 "Query2.Tag=2"));
    QCOMPARE(desk.queries.QueryCount(), 3);
    QCOMPARE(desk.windows.windows.size(), std::size_t(3));
}

void TestQuery::blocked_data()
{
    QTest::addColumn<QString>("row");
    QTest::addColumn<bool>("blocks");

    QTest::newRow("blocked") << u"bob - Blocked"_s << true;
    QTest::newRow("in any case") << u"BOB - BLOCKED"_s << true;
    QTest::newRow("another") << u"bobby - Blocked"_s << false;
    QTest::newRow("nick alone") << u"bob"_s << false;
}

void TestQuery::blocked()
{
    QFETCH(QString, row);
    QFETCH(bool, blocks);
    RecordingDesk desk;
    desk.ignored.AddItem(u"zed - Blocked"_s);
    desk.ignored.AddItem(row);
    const auto fails = [](auto call) {
        try {
            call();
        } catch (const RunTimeError& error) {
            return error.number() == RunTimeError::Number::TypeMismatch;
        }
        return false;
    };
    QTEST(fails([&] { desk.queries.QueryVisible(u"bob"_s); }), "blocks");
    QTEST(fails([&] { desk.queries.OpenQuery(u"bob"_s, {}); }), "blocks");
    QCOMPARE(desk.queries.QueryCount(), blocks ? 0 : 1);
    // Whoever had a window before keeps it, but is no longer heard.
    desk.ignored.Clear();
    desk.queries.OpenQuery(u"bob"_s, {});
    desk.ignored.AddItem(row);
    desk.take();
    QCOMPARE(desk.queries.OpenQuery(u"bob"_s, {}), 0);
    QCOMPARE(desk.take(), QStringList{u"Query1.SetFocus"_s});
    QTEST(fails([&] { desk.queries.QueryVisible(u"bob"_s); }), "blocks");
}

void TestQuery::blockedByDigits()
{
    RecordingDesk desk;
    for (const QString& nick : {u"a"_s, u"b"_s})
        desk.queries.OpenQuery(nick, {});
    desk.ignored.AddItem(u"99 - Blocked"_s);
    QVERIFY_THROWS_EXCEPTION(RunTimeError, desk.queries.QueryVisible(u"99"_s));
    desk.ignored.AddItem(u"2cool - Blocked"_s); // no number
    desk.take();
    QVERIFY_THROWS_EXCEPTION(RunTimeError, desk.queries.QueryVisible(u"2cool"_s));
    QCOMPARE(desk.take(), QStringList());
    desk.ignored.AddItem(u"2 - Blocked"_s); // a number unloads a window and passes
    desk.take();
    QVERIFY(!desk.queries.QueryVisible(u"2"_s));
    QCOMPARE(desk.take().size(), 1);
}

void TestQuery::thirtyFirst()
{
    RecordingDesk desk;
    desk.register_();
    for (int i = 1; i <= 30; ++i)
        QCOMPARE(desk.queries.OpenQuery(u'n' + QString::number(i), {}), i);
    desk.take();
    desk.hear(u":one.more!u@h PRIVMSG me :lost"_s);
    QCOMPARE(desk.take(), QStringList());
    QCOMPARE(desk.queries.QueryCount(), 31);
    QCOMPARE(desk.queries.FindQuery(u"N30"_s), 30);
    desk.queries.Queries(5).Unload(); // not enough: the search gets past the last slot first
    QVERIFY_THROWS_EXCEPTION(RunTimeError, desk.queries.FindQuery(u"new"_s));
    QVERIFY_THROWS_EXCEPTION(RunTimeError, desk.queries.OpenQuery(u"new"_s, {}));
    QVERIFY_THROWS_EXCEPTION(RunTimeError, desk.queries.Queries(31));
    desk.take();
    desk.queries.unloadOpen(); // as the end of the program does
    QCOMPARE(desk.take().filter(u".Unload"_s).size(), 29);
    desk.connection.mnu_File_Disconnect_Click();
    desk.connection.mnu_File_Connect_Click();
    desk.take();
    desk.sock.beConnected();
    QCOMPARE(desk.take().filter(u".Unload"_s).size(), 30);
    QCOMPARE(desk.queries.OpenQuery(u"new"_s, {}), 1);
}

QTEST_GUILESS_MAIN(TestQuery)
#include "tst_querytable.moc"
