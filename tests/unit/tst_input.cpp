#include "support/RecordingDesk.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

// The command language, and what a typed line becomes.
class TestInput final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void commands_data();
    void commands();
    void nick();
    void linesOutliveTheirViews();
    void targetIsReadOnce();
    void query();
    void commandsOfForms();
    void yieldsAroundTheWords();
    void identifiers_data();
    void identifiers();
    void timeInEveryLocale();
    void randomNick();
    void lines_data();
    void lines();
    void style();
    void typefaceOnEveryKey();
    void history();
    void historyIsBounded();
};

void TestInput::commands_data()
{
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("line");
    QTest::addColumn<QStringList>("effects");

    const auto row = [](const char* target, const char* text, const char* line,
                        const QStringList& effects = {}) {
        QTest::newRow(text) << QString::fromLatin1(target) << QString::fromLatin1(text)
                            << QString::fromLatin1(line) << effects;
    };
    row("", "JOIN #room", "JOIN #room");
    row("#room", "WHOIS bob", "WHOIS bob");
    row("", "msg bob hi there", "PRIVMSG bob :hi there");
    row("", "msg bob  two  blanks ", "PRIVMSG bob : two  blanks ");
    row("", "msg", "PRIVMSG msg :");
    row("", "notice bob hi there", "NOTICE bob :hi there");
    row("", "quit", "QUIT :quit");
    row("", "raw PING :x", "PING :x");
    row("", "id pw more", "PRIVMSG NickServ :IDENTIFY pw");
    row("", "kill bob too loud", "KILL bob :too loud");
    row("#room", "part #room bye now", "PART #room :bye now");
    row("", "part #unknown bye", "PART #unknown :bye");
    row("#room", "me waves", "PRIVMSG #room :{A}ACTION waves{A}", {u"DataIn| {C}06me waves"_s});
    row("PAL", "ME nods", "PRIVMSG PAL :{A}ACTION nods{A}", {u"Query1| {C}06me nods"_s});
    row("#other", "me waves there", "");
    for (const char* word : {"usercount", "users", "unum", "ucount", "chancount"})
        row("#room", word, "2");
    row("#other", "Users", "0");
    row("", "sv mine 1.0", "", {u"DataIn| {C}6Version Reply changed to 'mine 1.0'"_s});
    row("", "es {C}4red{O}x", "", {u"DataIn| {C}4redx"_s});
    // Joining words.
    row("", "msg bob a $+ b", "PRIVMSG bob :ab");
    row("", "msg bob $+ hi", "PRIVMSG bobhi :");
    row("", "msg $+ bob hi", "PRIVMSG bob :hi");
    row("", "msg bob a $+ b $+ c d", "PRIVMSG bob :abc d");
    row("", "msg bob ab $+", "PRIVMSG bob :a"); // nothing to join, and the last one goes
    row("", "msg bob $nosuch x", "PRIVMSG bob : x");
}

void TestInput::commands()
{
    QFETCH(QString, target);
    QFETCH(QString, text);
    QFETCH(QString, line);
    QFETCH(QStringList, effects);
    RecordingDesk desk;
    desk.enterRoom();
    desk.queries.OpenQuery(u"pal"_s, {});
    desk.take();
    QCOMPARE(desk.commands.ProcessInput(target, RecordingDesk::coded(text)),
             RecordingDesk::coded(line));
    QStringList expected = RecordingDesk::expected(effects);
    if (text.startsWith("es "_L1)) // the older writer does not know character 15
        expected.first().replace("redx"_L1, "red\x0fx"_L1);
    QCOMPARE(desk.take(), expected);
}

void TestInput::nick()
{
    RecordingDesk desk;
    QCOMPARE(desk.commands.ProcessInput({}, u"nick carol x"_s), QString());
    QCOMPARE(desk.variables.MyNick, u"carol"_s);
    for (const Winsock::State state : {Winsock::Connecting, Winsock::Connected, Winsock::Failed}) {
        desk.sock.setState(state);
        QCOMPARE(desk.commands.ProcessInput({}, u"nick dora"_s), u"NICK dora"_s);
    }
    QCOMPARE(desk.variables.MyNick, u"carol"_s);
}

// A failure costs the statement that it happens in: the line goes out unseen.
void TestInput::linesOutliveTheirViews()
{
    RecordingDesk desk;
    desk.enterRoom();
    const QString endless(40000, u'x');
    for (int i = 1; i <= 30; ++i)
        desk.queries.OpenQuery(u'n' + QString::number(i), {});
    QVERIFY_THROWS_EXCEPTION(RunTimeError, desk.queries.OpenQuery(u"one.more"_s, {}));
    desk.take();
    for (const QString& target : {u"#room"_s, u"n1"_s, u"stranger"_s}) {
        const QString line = desk.commands.ProcessInput(target, "me "_L1 + endless);
        QVERIFY(line.startsWith("PRIVMSG "_L1 + target + " :\x01"_L1 + "ACTION xxx"_L1));
    }
    QVERIFY(!desk.commands.ProcessInput({}, "query n1 "_L1 + endless).isEmpty());
    QCOMPARE(desk.commands.ProcessInput({}, "sv "_L1 + endless), QString());
}

void TestInput::targetIsReadOnce()
{
    RecordingDesk desk;
    desk.enterRoom();
    QString target = u"#room"_s;
    desk.events.onYield << [&] { target = u"#other"_s; };
    QCOMPARE(desk.commands.ProcessInput(target, u"me in $channel"_s), u"PRIVMSG #room :\x01"
                                                                      "ACTION in #room\x01"_s);
}

void TestInput::query()
{
    RecordingDesk desk;
    desk.enterRoom();
    QCOMPARE(desk.commands.ProcessInput({}, u"query pal"_s), QString());
    QVERIFY(desk.queries.FindQuery(u"pal"_s) == 1);
    desk.take();
    // Both forms are as odd as this.
    QCOMPARE(desk.commands.ProcessInput({}, u"query PAL hi there"_s), u"PRIVMSG <PAL> hi there"_s);
    QCOMPARE(desk.take(), QStringList{u"Query1.PutText me: hi there"_s});
    QCOMPARE(desk.commands.ProcessInput({}, u"query zed hi there"_s), u"PRIVMSG < >hi there"_s);
    QCOMPARE(desk.take().last(), u"Query2.PutText me: hi there"_s);
}

void TestInput::commandsOfForms()
{
    RecordingDesk desk;
    desk.buddies.visible = true;
    QCOMPARE(desk.commands.ProcessInput({}, u"bl"_s), QString());
    QCOMPARE(desk.take(), QStringList{u"BuddyList.Unload"_s});
    QVERIFY_THROWS_EXCEPTION(RunTimeError, desk.commands.ProcessInput({}, u"list"_s));
}

void TestInput::yieldsAroundTheWords()
{
    RecordingDesk desk;
    desk.events.onYield << [&] { desk.variables.MyNick = u"first"_s; }
                        << [&] { desk.variables.MyNick = u"second"_s; };
    QCOMPARE(desk.commands.ProcessInput({}, u"raw $me"_s), u"first"_s);
    QCOMPARE(desk.variables.MyNick, u"second"_s);
}

void TestInput::identifiers_data()
{
    QTest::addColumn<QString>("value");

    QTest::newRow("version") << u"1.00"_s;
    QTest::newRow("chan") << u"#room"_s;
    QTest::newRow("ME") << u"me"_s;
    QTest::newRow("server") << u"irc.example"_s;
    QTest::newRow("port") << u"6667"_s;
    QTest::newRow("date") << locale_texts::shortDate(QDate(2003, 4, 5));
    QTest::newRow("time") << locale_texts::longTime(QTime(6, 7, 8));
}

void TestInput::identifiers()
{
    RecordingDesk desk;
    desk.enterRoom();
    QTEST(desk.identifiers.Identifier(u"#room"_s, QString::fromLatin1(QTest::currentDataTag())),
          "value");
}

// In every locale there is: a number at one end at least, and no marks that lost their zone.
void TestInput::timeInEveryLocale()
{
    static const QRegularExpression whole(u"^[^\\s,()\\[\\]].*[^\\s,()\\[\\]]$"_s);
    const auto locales =
        QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyTerritory);
    QVERIFY(locales.size() > 100);
    for (const QLocale& locale : locales) {
        const QString text = locale_texts::longTime(QTime(6, 7, 8), locale);
        QVERIFY2(whole.match(text).hasMatch() && !text.contains("()"_L1) && !text.contains("[]"_L1),
                 qPrintable(locale.name() + u' ' + text));
    }
    QCOMPARE(locale_texts::longTime(QTime(6, 7, 8), QLocale(u"ca_ES"_s)), u"6:07:08"_s);
    QCOMPARE(locale_texts::longTime(QTime(6, 7, 8), QLocale(u"be_BY"_s)), u"06:07:08"_s);
    QCOMPARE(locale_texts::longTime(QTime(6, 7, 8), QLocale(u"bg_BG"_s)), u"6:07:08 ч."_s);
    QCOMPARE(locale_texts::longTime(QTime(6, 7, 8), QLocale(u"zh_TW"_s)), u"上午6:07:08"_s);
}

void TestInput::randomNick()
{
    RecordingDesk desk;
    desk.register_();
    const auto pick = [&](const QString& target) {
        return desk.identifiers.Identifier(target, u"RandNick"_s);
    };
    QCOMPARE(pick(u"#room"_s), QString()); // not there yet
    desk.hear(u":me!u@h JOIN #room"_s);
    QCOMPARE(pick(u"#room"_s), QString()); // nobody in it
    desk.hear(u":s 353 me = #room :a b c"_s);
    QCOMPARE(pick(u"#room"_s), u"a"_s);
    desk.random = 0.34;
    QCOMPARE(pick(u"#ROOM"_s), u"b"_s);
    desk.random = 0.9999;
    QCOMPARE(pick(u"#room"_s), u"c"_s);
    QCOMPARE(pick(u"a"_s), QString());
}

void TestInput::lines_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QStringList>("effects");
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("left");

    const auto row = [](const char* name, const QString& typed, const QStringList& effects) {
        const bool taken = !effects.isEmpty();
        QTest::newRow(name) << typed << effects << (taken ? 0 : 13) << (taken ? QString() : typed);
    };
    const auto message = [](const QString& text) {
        return QStringList{"<< PRIVMSG #room :{C}1 "_L1 + text,
                           "DataIn| {C}04<me{B}{B}>{C}1 "_L1 + text};
    };
    row("message", u"hello"_s, message(u"hello"_s));
    row("blanks stay", u"  hello "_s, message(u"  hello "_s));
    row("slash", u"/me waves"_s, message(u"/me waves"_s));
    row("blanks alone", u"   "_s, {});
    row("for bots", u"  !help x "_s,
        {u"<< PRIVMSG #room :  !help x "_s, u"DataIn| {C}04<me> {C}1   !help x "_s});
    row("raw", u" IRC JOIN #x  "_s, {u"<< JOIN #x"_s});
    row("raw in lower case", u"irc JOIN #x"_s, message(u"irc JOIN #x"_s));
    row("raw of nothing", u"IRC "_s, message(u"IRC "_s));
}

void TestInput::lines()
{
    QFETCH(QString, typed);
    QFETCH(QStringList, effects);
    RecordingDesk desk;
    desk.enterRoom();
    desk.box.content = typed;
    QTEST(desk.inputLine.KeyPress(13), "key");
    QTEST(desk.box.content, "left");
    QCOMPARE(desk.take(), RecordingDesk::expected(effects));
}

void TestInput::style()
{
    RecordingDesk desk;
    desk.enterRoom();
    desk.style.BoldPrefix = RecordingDesk::coded(u"{B}"_s);
    desk.style.UnderlinePrefix = RecordingDesk::coded(u"{U}"_s);
    desk.style.TextColor = u"4"_s;
    for (const QString& text : {u"hi"_s, u"!hi"_s}) {
        desk.box.content = text;
        desk.inputLine.KeyPress(13);
    }
    QCOMPARE(desk.take(),
             RecordingDesk::expected(
                 "<< PRIVMSG #room :{B}{C}4 {U}hi\nDataIn| {C}04<me{B}{B}>{B}{C}4 {U}hi\n"
                 "<< PRIVMSG #room :!hi\nDataIn| {C}04<me> {B}{C}4 {U}!hi"));
    desk.connection.mnu_File_Disconnect_Click();
    desk.take();
    desk.box.content = u"to nobody"_s; // shown all the same
    QCOMPARE(desk.inputLine.KeyPress(13), 0);
    QCOMPARE(desk.take(), RecordingDesk::expected("DataIn| {C}04<me{B}{B}>{B}{C}4 {U}to nobody"));
}

void TestInput::typefaceOnEveryKey()
{
    RecordingDesk desk;
    desk.variables.FontName = u"Courier"_s + QString(248, QChar(u'\0'));
    desk.variables.FontSize = 14;
    QCOMPARE(desk.inputLine.KeyPress('a'), int('a'));
    QCOMPARE(desk.box.typeface, u"Courier 14"_s);
    QCOMPARE(desk.take(), QStringList());
}

void TestInput::history()
{
    RecordingDesk desk;
    desk.enterRoom();
    const auto key = [&](int code) {
        desk.take();
        const int left = desk.inputLine.KeyDown(code);
        const bool beeped = desk.take() == QStringList{u"Beep"_s};
        return beeped && left == code ? u"beep"_s : desk.box.content;
    };
    constexpr int up = 38;
    constexpr int down = 40;
    desk.box.content = u"typed"_s;
    QCOMPARE(key(up), u"beep"_s);
    QCOMPARE(key(down), u"beep"_s);
    QCOMPARE(key('A'), u"typed"_s);
    for (const QString& text : {u"a"_s, u"!bot"_s, u"IRC PING x"_s, u"b"_s}) {
        desk.box.content = text;
        desk.inputLine.KeyPress(13);
    }
    QStringList seen;
    for (const int code : {down, up, up, up, down, down})
        seen += key(code);
    QCOMPARE(seen.join(u' '), u"beep b a beep b beep"_s);
    key(up);
    desk.inputLine.KeyPress(13); // sends the old line, and the cursor is behind the end again
    QCOMPARE(key(up) + key(up) + key(up), u"aba"_s);
}

void TestInput::historyIsBounded()
{
    TextHistory history;
    for (int i = 1; i <= 9; ++i)
        history.add(QString::number(i), 3);
    QStringList held;
    while (const std::optional<QString> line = history.back())
        held += *line;
    QCOMPARE(held.join(u' '), u"9 8 7 6"_s); // one more than the limit
    QVERIFY_THROWS_EXCEPTION(RunTimeError, TextHistory().add(u"x"_s, -1));
}

QTEST_GUILESS_MAIN(TestInput)
#include "tst_input.moc"
