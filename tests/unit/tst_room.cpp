#include "common/RunTimeError.h"
#include "support/RecordingDesk.h"

#include <QTest>

using namespace Qt::StringLiterals;

// Who is in the room, its modes, and who may change its topic.
class TestRoom final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void signs_data();
    void signs();
    void captions();
    void renaming();
    void ranks();
    void rowWithoutRecord();
    void recordsOutliveTheSession();
    void modes_data();
    void modes();
    void modesFail();
    void topicKeys();
    void topicLock_data();
    void topicLock();
};

void TestRoom::signs_data()
{
    QTest::addColumn<QString>("nick");
    QTest::addColumn<QString>("row");
    QTest::addColumn<QString>("flags"); // isOp, isVoice, isHalfOp

    QTest::newRow("owner is an operator") << u"~alice"_s << u"@alice"_s << u"o--"_s;
    QTest::newRow("half-operator shows nothing") << u"%alice"_s << u"alice"_s << u"--h"_s;
    QTest::newRow("voice") << u"+alice"_s << u"+alice"_s << u"-v-"_s;
    QTest::newRow("both") << u"@+alice"_s << u"@alice"_s << u"ov-"_s;
    QTest::newRow("anywhere") << u"al+i%ce"_s << u"+alice"_s << u"-vh"_s;
}

void TestRoom::signs()
{
    QFETCH(QString, nick);
    RecordingDesk desk;
    NickList& nicks = desk.room.nicks;
    nicks.AddNick(nick);
    const QString flags = QString(nicks.isOp(u"ALICE"_s) ? u'o' : u'-') +
                          (nicks.isVoice(u"Alice"_s) ? u'v' : u'-') +
                          (nicks.isHalfOp(u"alice"_s) ? u'h' : u'-');
    QTEST(flags, "flags");
    QTEST(desk.channel.nicks.rows().join(u','), "row");
    QCOMPARE(nicks.GetNick(1), u"alice"_s);
}

void TestRoom::captions()
{
    RecordingDesk desk;
    NickList& nicks = desk.room.nicks;
    nicks.AddNick({});
    QCOMPARE(desk.take(), QStringList());
    nicks.AddNick(u"a"_s);
    nicks.AddNick(u"a"_s);
    nicks.RemoveNick(u"a"_s);
    nicks.showChatterCount();
    nicks.showNoChatters();
    QCOMPARE(desk.take(),
             RecordingDesk::expected(
                 "cmdCount= Total Chatters :  [ 1 ]\ncmdCount= Total Chatters :  [ 2 ]\n"
                 "cmdCount= Total Chatters : [ 1 ]\ncmdCount= Total Chatters :  [ 1 ]\n"
                 "cmdCount= Total Chatters :  [ 0 ]"));
    QCOMPARE(desk.channel.nicks.rows(), QStringList{u"a"_s}); // the second of the two
    nicks.RemoveNick(u"A"_s);
    QCOMPARE(nicks.NickCount(), 1); // exact case only
    desk.channel.nicks.Clear();
    nicks.RemoveNick(u"a"_s);
    QCOMPARE(nicks.NickCount(), 0);
    QCOMPARE(nicks.ChatterCount(), 1); // a record without its row does not count down
    QVERIFY_THROWS_EXCEPTION(RunTimeError, nicks.GetNick(1));
    QVERIFY_THROWS_EXCEPTION(RunTimeError, nicks.GetNick(0));
}

void TestRoom::renaming()
{
    RecordingDesk desk;
    NickList& nicks = desk.room.nicks;
    for (const QString& nick : {u"@alice"_s, u"bob"_s, u"zed"_s})
        nicks.AddNick(nick);
    QVERIFY(nicks.ChangeNck(u"BOB"_s, u"zzz"_s)); // in place, flags and all
    QVERIFY(nicks.ChangeNck(u"alice"_s, u"amy"_s));
    QCOMPARE(desk.channel.nicks.rows(), RecordingDesk::expected("@amy\nzzz\nzed"));
    nicks.SetVoice(u"zzz"_s, true);
    nicks.SetVoice(u"zzz"_s, false); // a change of rank sorts it afresh
    QCOMPARE(desk.channel.nicks.rows(), RecordingDesk::expected("@amy\nzed\nzzz"));
    QVERIFY(!nicks.ChangeNck(u"nobody"_s, u"x"_s));
    desk.channel.nicks.Clear();
    QVERIFY(!nicks.ChangeNck(u"zed"_s, u"ted"_s));
    QVERIFY(nicks.InChannel(u"TED"_s)); // the record has changed all the same
}

void TestRoom::ranks()
{
    RecordingDesk desk;
    NickList& nicks = desk.room.nicks;
    nicks.AddNick(u"@+alice"_s);
    nicks.SetOp(u"Alice"_s, false); // exact case only
    QVERIFY(nicks.isOp(u"alice"_s));
    nicks.SetOp(u"alice"_s, false);
    QCOMPARE(desk.channel.nicks.rows(), QStringList{u"+alice"_s});
    nicks.SetHelper(u"alice"_s, true);
    QVERIFY(nicks.isHalfOp(u"alice"_s));
    QCOMPARE(desk.channel.nicks.rows(), QStringList{u"+alice"_s});
    nicks.SetOwner(u"alice"_s, true);
    nicks.SetSOp(u"alice"_s, true);
    QCOMPARE(desk.channel.nicks.rows(), QStringList{u"+alice"_s});
    nicks.SetVoice(u"alice"_s, false);
    QCOMPARE(desk.channel.nicks.rows(), QStringList{u"&alice"_s});
    nicks.SetOp(u"alice"_s, true); // "&" is not taken off a row: it is not found
    QCOMPARE(desk.channel.nicks.rows(), QStringList{u"&alice"_s});
    QVERIFY(nicks.isOp(u"alice"_s));
    QCOMPARE(NickDisplay({u"x"_s, true, false, true, true, true}), u"@x"_s);
    QCOMPARE(NickDisplay({u"x"_s, true, false, false, false, true}), u"~x"_s);
}

void TestRoom::rowWithoutRecord()
{
    RecordingDesk desk;
    desk.channel.nicks.AddItem(u"ghost"_s);
    QVERIFY_THROWS_EXCEPTION(RunTimeError, desk.room.nicks.SetOp(u"ghost"_s, true));
    QCOMPARE(desk.channel.nicks.rows(), QStringList()); // taken away before the failure
    desk.channel.nicks.AddItem(u"ghost"_s);
    QVERIFY_THROWS_EXCEPTION(RunTimeError, desk.room.nicks.ChangeNck(u"ghost"_s, u"x"_s));
}

void TestRoom::recordsOutliveTheSession()
{
    RecordingDesk desk;
    desk.enterRoom(u"me @alice"_s);
    desk.connection.mnu_File_Disconnect_Click();
    QCOMPARE(desk.channel.nicks.rows(), QStringList());
    QCOMPARE(desk.room.nicks.ChatterCount(), 0);
    desk.room.nicks.AddNick(u"alice"_s); // comes back without her rank
    QCOMPARE(desk.room.nicks.NickCount(), 3);
    QVERIFY(desk.room.nicks.isOp(u"alice"_s));
    desk.room.nicks.SetVoice(u"alice"_s, true); // shows the oldest record
    QCOMPARE(desk.channel.nicks.rows(), QStringList{u"@alice"_s});
}

void TestRoom::modes_data()
{
    QTest::addColumn<QStringList>("lines"); // target, blank, letters and parameters
    QTest::addColumn<QString>("modeText");
    QTest::addColumn<QString>("rows");
    QTest::addColumn<QString>("keyAndLimit");

    const auto row = [](const char* name, const QStringList& lines, const char* modeText,
                        const char* rows = "@me,bob", const char* keyAndLimit = "/0") {
        QTest::newRow(name) << lines << QString::fromLatin1(modeText) << QString::fromLatin1(rows)
                            << QString::fromLatin1(keyAndLimit);
    };
    row("letters in order of arrival", {u"#room +nt"_s, u"#room +k x"_s, u"#room +n"_s}, "+ntk",
        "@me,bob", "x/0");
    row("taken away", {u"#room +nts"_s, u"#room -t"_s}, "+ns");
    row("the only one", {u"#room +n"_s, u"#room -n"_s}, "");
    row("case counts", {u"#ROOM +nN"_s}, "+nN");
    row("ranks in one line", {u"#room +v-o bob me"_s}, "", "+bob,me");
    row("rank of a stranger", {u"#room +o zed"_s}, "");
    row("key and limit", {u"#room +ntlk 50 abc"_s}, "+ntlk", "@me,bob", "abc/50");
    row("and away again", {u"#room +lk 50 abc"_s, u"#room -lk x y"_s}, "");
    row("ban takes its mask", {u"#room +bv *!*@* bob"_s}, "", "+bob,@me");
    row("exception does not", {u"#room +ev bob mask"_s}, "+e", "+bob,@me");
    row("no sign is plus", {u"#room n"_s}, "+n");
    row("own modes share the table", {u"#room +n"_s, u"me +i"_s, u"me -n"_s}, "+i");
    row("own mode takes a word, too", {u"me +ol x y"_s}, "+ol");
    row("stranger", {u"#other +n"_s, u"bob +i"_s}, "");
    row("bad limit sets nothing", {u"#room +nl many"_s}, "+n");
}

void TestRoom::modes()
{
    QFETCH(QStringList, lines);
    RecordingDesk desk;
    desk.enterRoom();
    for (const QString& line : lines)
        desk.hear(":server MODE "_L1 + line);
    QTEST(desk.room.modes.ModeText(), "modeText");
    QTEST(desk.channel.nicks.rows().join(u','), "rows");
    const ChannelModes& modes = desk.room.modes;
    QTEST(QString(modes.ChanKey + u'/' + QString::number(modes.ChanLimit)), "keyAndLimit");
}

void TestRoom::modesFail()
{
    RecordingDesk desk;
    desk.enterRoom();
    const std::pair<QString, RunTimeError::Number> failures[]{
        {u"+o"_s, RunTimeError::Number::SubscriptOutOfRange}, // a nick is missing
        {u"-l"_s, RunTimeError::Number::SubscriptOutOfRange}, // even this one takes a word
        {u"+l x"_s, RunTimeError::Number::TypeMismatch},
        {u"+l 40000"_s, RunTimeError::Number::Overflow},
    };
    for (const auto& [text, number] : failures) {
        try {
            desk.modeLine.ApplyModeLine(u"#room"_s, text);
            QFAIL(qPrintable(text));
        } catch (const RunTimeError& error) {
            QCOMPARE(error.number(), number);
        }
    }
}

void TestRoom::topicKeys()
{
    RecordingDesk desk;
    desk.enterRoom();
    RichTextBox& field = desk.channel.rtbTopic();
    field.setText(u"news \r\n"_s);
    desk.take();
    TopicField::setLocked(field, true);
    QCOMPARE(desk.topic.KeyDown(8), 0);
    QCOMPARE(desk.topic.KeyDown(46), 0);
    QCOMPARE(desk.topic.KeyDown(37), 37);
    QCOMPARE(desk.topic.KeyPress('a'), 0);
    QCOMPARE(desk.topic.KeyPress(13), 0);
    QCOMPARE(desk.take(), QStringList());
    TopicField::setLocked(field, false);
    QCOMPARE(desk.topic.KeyDown(8), 8);
    QCOMPARE(desk.topic.KeyPress('a'), int('a'));
    QCOMPARE(desk.topic.KeyPress(13), 0);
    QCOMPARE(desk.take(), QStringList{u"<< TOPIC #room :news "_s}); // one line, whatever is in it
}

void TestRoom::topicLock_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<bool>("before");
    QTest::addColumn<bool>("after");

    QTest::newRow("given +o") << u"MODE #room +o me"_s << true << false;
    QTest::newRow("losing it") << u"MODE #room -o me"_s << false << true;
    QTest::newRow("+o of another") << u"MODE #room +o bob"_s << true << true;
    QTest::newRow("topic arrives") << u"332 me #room :news"_s << false << true;
    QTest::newRow("topic changed") << u"TOPIC #room :news"_s << false << false;
}

void TestRoom::topicLock()
{
    QFETCH(QString, line);
    QFETCH(bool, before);
    RecordingDesk desk;
    desk.enterRoom();
    TopicField::setLocked(desk.channel.rtbTopic(), before);
    desk.hear(":server "_L1 + line);
    QTEST(TopicField::isLocked(desk.channel.rtbTopic()), "after");
}

QTEST_GUILESS_MAIN(TestRoom)
#include "tst_room.moc"
