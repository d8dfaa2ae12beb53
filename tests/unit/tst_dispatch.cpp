#include "platform/LocaleTexts.h"
#include "support/RecordingDesk.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QStringList lines(const QString& text)
{
    return text.isEmpty() ? QStringList() : text.split(u'\n');
}

} // namespace

// A server line in, its effects out, in their order. The desk stands in #room as "me", with bob in
// it and a private window with pal.
class TestDispatch final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void effects_data();
    void effects();
    void whoisView_data();
    void whoisView();
    void welcome_data();
    void welcome();
    void password();
    void roomEntered();
    void ownNickIsPaddedAtFirst();
    void ownJoinAgain();
    void ownKick();
    void cannotJoin();
    void namesFillTheRoom();
    void topicIsShownWithoutItsFirstCharacter();
    void nickChanges();
    void privateWindows();
    void wordWithCarriageReturn();
    void shortLines();
};

void TestDispatch::effects_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("effects"); // one a line; see RecordingDesk::expected()

    const auto row = [](const char* name, const char* line, const char* effects) {
        QTest::newRow(name) << QString::fromLatin1(line) << QString::fromLatin1(effects);
    };
    const auto rows = [&](const char* words, const char* rest, const char* effects) {
        for (const QByteArray& word : QByteArray(words).split(' ')) {
            const QByteArray tail = word + ' ' + rest;
            row(tail, QByteArray(":s " + tail), QByteArray(effects).replace("%", word));
        }
    };

    // Lines that mean nothing.
    rows("002x 000 1 331 322 472 477 999 ERROR INVITE PONG WALLOPS", "me #x :a  b",
         "DataIn| *** {B}%{B} me #x a  b");
    rows("305 306 318 321 323 329 366 372 375 376 422", "me #room :whatever", "");

    // Questions and greetings.
    row("ping", "PING :a.b c", "<< PONG :a.b c");
    row("ping in lower case, with prefix", ":s ping abc def", "<< PONG :abc");
    rows("002 003 004 005", "me :Your host", "Login.cmdSignout\nLogin.Hide\nDataIn| * Your host");
    rows("251 252 253 254 255 265 266", "me 5 :users", "DataIn| {C}065 users");
    rows("401 402 403 412 421 461 481 482 484", "me x :No such  thing",
         "DataIn| {C}04* x No such  thing");
    row("303", ":s 303 me :bob pal ", "BuddyList.AddUsers bob pal ");

    // A room that is not known.
    for (const char* line :
         {":al!u@h JOIN #other", ":bob!u@h PART #other", ":op!u@h KICK #other me :x",
          ":bob!u@h TOPIC #other :news", ":bob!u@h MODE #other +o me",
          ":bob!u@h PRIVMSG #other :hi", ":bob!u@h PRIVMSG &room :hi", ":s 328 me #other :http://x",
          ":s 332 me #other :news", ":s 333 me #other al 0", ":s 353 me = #other :al"})
        row(line, line, "");

    // The room.
    row("join with a sign", ":@al!u@h JOIN #room",
        "cmdCount= Total Chatters :  [ 3 ]\nDataIn| {C}03{B}al{B} has joined {B}#room");
    row("join", ":al!u@h JOIN :#ROOM",
        "cmdCount= Total Chatters :  [ 3 ]\nDataIn| {C}03{B}al{B} has joined {B}#room");
    row("part", ":bob!u@h PART #room :see you",
        "cmdCount= Total Chatters : [ 1 ]\nDataIn| {C}03{B}bob{B} has left {B}#room");
    row("part of a stranger is shown", ":zed!u@h PART :#Room",
        "DataIn| {C}03{B}zed{B} has left {B}#room");
    row("quit", ":bob!u@h QUIT :Quit: bye",
        "cmdCount= Total Chatters : [ 1 ]\nDataIn| {C}02{B}bob{B} has Quit IRC ( Quit: bye )");
    row("quit of a peer", ":PAL!u@h QUIT :x", "Query1| {C}02{B}PAL{B} has Quit IRC ( x )");
    row("kick", ":op!u@h KICK #room bob :too loud",
        "DataIn| {C}04{B}bob{B} was kicked from {B}#room{B} by {B}op{B} [ too loud ]\n"
        "cmdCount= Total Chatters : [ 1 ]");
    row("topic", ":bob!u@h TOPIC #room :news",
        "Topic| news\nDataIn| {C}03Topic changed by {B}bob{B} : news");
    row("mode", ":bob!u@h MODE #room +n", "DataIn| {C}03{B}bob{B} sets mode: +n");
    row("own mode", ":me!u@h MODE me :+i", "DataIn| {C}03{B}me{B} sets mode: +i");
    row("mode that fails is shown before", ":bob!u@h MODE #room +o",
        "DataIn| {C}03{B}bob{B} sets mode: +o");
    row("324", ":s 324 me #room :+nt", "");
    row("328", ":s 328 me #room :http://x", "DataIn| {C}03Channel URL{C}{U}:{U} {C}12http://x{C}");
    row("333 with a bad time", ":s 333 me #room al soon", "");

    // Talk.
    row("said in the room", ":bob!u@h PRIVMSG #room :hi  all", "DataIn| {C}12<bob> hi  all");
    row("version asked in the room", ":bob!u@h PRIVMSG #room :{A}VERSION{A}",
        "<< CTCPREPLY bob VERSION :Quill Harbor Messengr for Windows OS");
    row("version asked under a name with a line end", ":a\rQUIT!u@h PRIVMSG me :{A}VERSION{A}",
        "DataIn| {C}05{B}a\rQUIT{B} has just requested your version\n<< NOTICE a");
    row("action in the room", ":bob!u@h PRIVMSG #room :{A}ACTION waves{A}",
        "DataIn| {C}06bob waves");
    row("said to me", ":pal!u@h PRIVMSG me :hi",
        "Query1.lblHost=u@h\nQuery1.Caption=pal\nQuery1.lblNick=pal\nQuery1.PutText pal: hi");
    row("said by a server", ":s.example PRIVMSG me :hi",
        "Query2.Caption=\nQuery2.lblNick=\nQuery2.lblHost=s.example\nQuery2.Visible=true\n"
        "Query2.Tag=2\nQuery2.Caption=\nQuery2.lblNick=\nQuery2.PutText : hi");
    row("version", ":al!u@h PRIVMSG me :{A}VERSION{A}",
        "DataIn| {C}05{B}al{B} has just requested your version\n"
        "<< NOTICE al :{A}VERSION QuillHarbor Messenger 1.0{A}");
    row("pinged", ":al!u@h PRIVMSG me :{A}PING 12345{A}",
        "DataIn| {C}05{B}al{B} has just pinged you\n"
        "<< NOTICE al :{A}PING 0 seconds, cause Quill Harbor Messenger is elite.{A}");
    row("unknown request", ":al!u@h PRIVMSG me :{A}TIME{A}", "");
    row("action without a window", ":al!u@h PRIVMSG me :{A}ACTION waves{A}", "");
    row("private action", ":PAL!u@h PRIVMSG me :{A}ACTION waves{A}",
        "DataIn| {C}12<> {C}06PAL waves");
    row("notice", ":al!u@h NOTICE me :psst", "DataIn| {C}05{B}NOTICE{B}{C} {B}al{B}: psst");
    row("notice by a server", ":s NOTICE * :*** Looking", "DataIn| {C}05*** Looking");
    row("nick is protected", ":NickServ!s@s NOTICE me :please choose a different nick.",
        "lstNicks.Enabled=false\nfrmPassword.Show");
    row("recognized", ":NickServ!s@s NOTICE me :Password accepted - you are now recognized.",
        "frmPassword.Unload\nlstNicks.Enabled=true\nChannel.Show\nDataIn| {C}05{B}NOTICE{B}{C} "
        "{B}NickServ{B}: Password accepted - you are now recognized.");
    row("wrong password", ":NickServ!s@s NOTICE me :Password incorrect.",
        "lstNicks.Enabled=false\nfrmPassword.Show\n"
        "DataIn| {C}05{B}NOTICE{B}{C} {B}NickServ{B}: Password incorrect.");
    row("identified before", ":NickServ!s@s NOTICE me :You are already identified.",
        "lstNicks.Enabled=true\nfrmPassword.Unload\n"
        "DataIn| {C}05{B}NOTICE{B}{C} {B}NickServ{B}: You are already identified.");
    row("killed", ":op!u@h KILL bob :Killed (op (x))",
        "DataIn| {C}2{B}bob{B} was killed [Killed (op (x))]");
    row("killed myself", ":op!u@h KILL me :x",
        "sock.Close\nlstNicks.Clear\nident.Close\nConnect.Enabled=true\nConnect.Caption=&Connect\n"
        "Disconnect.Enabled=false\ncmdCount= Total Chatters :  [ 0 ]\n"
        "DataIn| {C}2{B}You{B} were Killed [x]");

    // Nicks and lists.
    row("nick of another", ":zed!u@h NICK :ted", "");
    row("431", ":s 431 me :No nickname given", "usenick.Show");
    row("432", ":s 432 me 9x :Erroneous",
        "box|Invalid Name Or Nick Already In Use|Choose Another Nick\nusenick.Show");
    row("433 of another nick", ":s 433 * other :In use", "usenick.Show");
    row("433 of mine", ":s 433 * me :In use", "<< NICK \nusenick.Show");
    rows("346 348 367", "me #room mask setter :123", "");
    rows("347 349 368", "me #room :End", "ChannelInfo.Show");
}

void TestDispatch::effects()
{
    QFETCH(QString, line);
    QFETCH(QString, effects);
    RecordingDesk desk;
    desk.enterRoom();
    desk.queries.OpenQuery(u"pal"_s, {});
    desk.take();
    desk.hear(RecordingDesk::coded(line));
    QCOMPARE(desk.take(), RecordingDesk::expected(lines(effects)));
}

void TestDispatch::whoisView_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("text");

    const auto row = [](const char* line, const char* text) {
        QTest::newRow(QByteArray(line).left(3))
            << QString::fromLatin1(line) << QString::fromLatin1(text);
    };
    row("301 me pal :gone  fishing", "{C}05{B}pal{B} is away: gone  fishing");
    row("307 me pal :is a registered nick", "{C}05{B}pal{B} is a registered nick");
    row("312 me pal irc.example :a server", "{C}05{B}pal{B} is using: irc.example ( a server )");
    row("313 me pal :is an operator", "{C}05{B}pal{B} is an operator");
    row("317 me pal 13 1795378094 :seconds idle",
        "{C}05{B}pal{B} 13 seconds idle / 1795378094 sign-on time");
    row("319 me pal :#a @#b", "{C}05{B}pal{B} is on: #a @#b");
    row("320 me pal :is special", "{C}05{B}pal{B} pal");
    row("311 me pal u h * :Real  Name", "{C}05{B}pal{B} is u@h * Real  Name");
}

void TestDispatch::whoisView()
{
    QFETCH(QString, line);
    QFETCH(QString, text);
    RecordingDesk desk;
    desk.enterRoom();
    desk.queries.OpenQuery(u"pal"_s, {});
    for (const auto& [whoisQuery, nick, view] :
         {std::tuple(false, u"pal"_s, u"DataIn"_s), std::tuple(true, u"pal"_s, u"Query1"_s),
          std::tuple(true, u"zed"_s, u"DataIn"_s)}) {
        desk.variables.WhoisQuery = whoisQuery;
        desk.take();
        desk.hear(":s "_L1 + QString(line).replace("pal"_L1, nick));
        QStringList expected{view + "| "_L1 + QString(text).replace("pal"_L1, nick)};
        if (line.startsWith("311"_L1))
            expected.prepend(view + "|  "_L1);
        QCOMPARE(desk.take(), RecordingDesk::expected(expected));
    }
}

void TestDispatch::welcome_data()
{
    QTest::addColumn<QString>("autoJoin");
    QTest::addColumn<QStringList>("joins");

    const QString padding(5, QChar(u'\0'));
    QTest::newRow("with its padding")
        << u"#room"_s + padding << QStringList{"<< JOIN #room"_L1 + padding};
    QTest::newRow("none") << u"<none>"_s + padding << QStringList();
    QTest::newRow("with a key") << u"#room key"_s << QStringList{u"<< JOIN #room key"_s};
    QTest::newRow("empty") << QString() << QStringList{u"<< JOIN "_s};
}

void TestDispatch::welcome()
{
    QFETCH(QString, autoJoin);
    QFETCH(QStringList, joins);
    RecordingDesk desk;
    desk.sock.setState(Winsock::Connected);
    desk.variables.AutoJoin = autoJoin;
    desk.hear(u":s 001 given :Welcome to it"_s);
    QCOMPARE(desk.variables.MyNick, u"given"_s);
    QCOMPARE(desk.take(), RecordingDesk::expected("DataIn| * Welcome to it\n<< MODE given +i") +
                              joins + QStringList({u"Channel.Visible=true"_s, u"Channel.Show"_s}));
}

void TestDispatch::password()
{
    RecordingDesk desk;
    desk.register_();
    desk.login.Text3 = u"secret"_s;
    desk.hear(u":s 005 me X=1 :are supported"_s);
    QCOMPARE(desk.take(),
             RecordingDesk::expected(
                 "frmPassword.Unload\n<< IDENTIFY secret\nLogin.cmdSignout\nLogin.Hide\n"
                 "DataIn| * X=1 are supported"));
}

void TestDispatch::roomEntered()
{
    RecordingDesk desk;
    desk.register_();
    desk.hear(u":ME!u@h JOIN :#room"_s);
    QCOMPARE(desk.take(), RecordingDesk::expected("Channel.Visible=true\n<< MODE #room"));
    QCOMPARE(desk.room.Tag, u"1"_s);

    desk.channel.dataIn.view.setText(u"old"_s);
    desk.take();
    desk.hear(u":s 332 me #room :xnews"_s);
    QCOMPARE(
        desk.take(),
        RecordingDesk::expected(
            "Topic| xnews\nDataIn emptied\nPause 0.2\n"
            "DataIn| {C}3You have entered to the chat room\n"
            "DataIn| {C}4Welcome To {B}{C}12Quill Harbor Messenger{C}!\n"
            "DataIn| {C}5Checking Your Internet Connection {C}14 Connecting please wait... {C}\n"
            "DataIn| {C}03Topic is \"{C}xnews{C}03\""));
    QCOMPARE(desk.channel.rtbTopic().SelStart(), 0);

    desk.hear(u":s 333 me #room al!u@h :86400"_s);
    const QString date =
        locale_texts::shortDateTime(QDateTime(QDate(1970, 1, 2), QTime(0, 0), Qt::UTC));
    QCOMPARE(desk.take(),
             RecordingDesk::expected(
                 QString("DataIn| {C}03Topic set by {B}al!u@h{B} on {B}"_L1 + date + "{B}"_L1)));
}

// A server may change a nick before it welcomes.
void TestDispatch::ownNickIsPaddedAtFirst()
{
    RecordingDesk desk;
    desk.variables.MyNick = u"loaded"_s + QString(249, QChar(u'\0'));
    desk.connection.mnu_File_Connect_Click();
    desk.sock.beConnected();
    desk.hear(u":loaded!u@h NICK :guest7"_s);
    QCOMPARE(desk.variables.MyNick, u"guest7"_s);
}

void TestDispatch::ownJoinAgain()
{
    RecordingDesk desk;
    desk.enterRoom();
    desk.hear(u":me!u@h JOIN #second"_s);
    QCOMPARE(desk.channels.ChannelCount(), 2); // raised before the failure
    QCOMPARE(desk.room.ChannelName, u"#room"_s);
    QCOMPARE(desk.take(), QStringList());
    desk.hear(u":bob!u@h PRIVMSG #second :lost"_s);
    desk.hear(u":bob!u@h MODE me +i"_s); // the search comes first, so this is lost, too
    QCOMPARE(desk.take(), QStringList());
    desk.hear(u":bob!u@h PRIVMSG #room :heard"_s);
    QCOMPARE(desk.take(), RecordingDesk::expected("DataIn| {C}12<bob> heard"));
    desk.hear(u":zed!u@h QUIT :x"_s); // walks all rooms, and gets past the last one
    desk.hear(u":me!u@h NICK :you"_s);
    QCOMPARE(desk.take(), RecordingDesk::expected("DataIn| {C}03Your nick is now {B}you\n"
                                                  "DataIn| {C}03{B}me{B} is now known as {B}you"));
}

void TestDispatch::ownKick()
{
    RecordingDesk desk;
    desk.enterRoom();
    desk.hear(u":s MODE #room +nt"_s);
    desk.take();
    // While it pauses the modes are gone and the text of them is not.
    desk.events.onPause << [&] { desk.journal(desk.room.modes.ModeText()); };
    desk.hear(u":op!u@h KICK #room me :go"_s);
    QCOMPARE(desk.take(),
             RecordingDesk::expected(
                 "DataIn| {C}04{B}me{B} was kicked from {B}#room{B} by {B}op{B} [ go ]\n"
                 "cmdCount= Total Chatters : [ 1 ]\nChannel.Hide\nLogin.Show\nmnu_Sign=Sign In\n"
                 "Login.UnLog\n"
                 "DataIn| {C}04You were kicked from {B}#room{B} by {B}op{B} [ go ]\nsock.Close\n"
                 "lstNicks.Clear\nident.Close\nPause 0.1\n+nt\nConnect.Enabled=true\n"
                 "Connect.Caption=&Connect\nDisconnect.Enabled=false\n"
                 "cmdCount= Total Chatters :  [ 0 ]"));
    QCOMPARE(desk.room.Tag, u"NOPART"_s);
    QCOMPARE(desk.room.modes.ModeText(), QString());
    QCOMPARE(desk.room.nicks.ChatterCount(), 0);
    QCOMPARE(desk.room.nicks.NickCount(), 1);
    QCOMPARE(desk.room.ChannelName, u"#room"_s);
    QVERIFY(!desk.connection.isWaitingToRetry());
}

void TestDispatch::cannotJoin()
{
    for (const QString& numeric : {u"471"_s, u"473"_s, u"474"_s, u"475"_s}) {
        RecordingDesk desk;
        desk.register_();
        desk.hear(":s "_L1 + numeric + " me #shut :Cannot join"_L1);
        QCOMPARE(desk.take(),
                 RecordingDesk::expected(
                     "DataIn| {C}04You cannot join #shut : Cannot join\nsock.hold\n"
                     "box|Error|You cannot join #shut : Cannot join\nsock.release\n"
                     "<< QUIT :gone\nConnect.Enabled=true\nConnect.Caption=&Connect\n"
                     "Disconnect.Enabled=false\n"
                     "DataIn| {C}05You are Disconnected from Quill Harbor Server\nsock.Close\n"
                     "lstNicks.Clear\nText1=6667\ncmdCount= Total Chatters :  [ 0 ]\nLogin.UnLog\n"
                     "Login.cmdSignout\nmnu_Sign=Sign In\nLogin.locked=false\nLogin.cmdSignout\n"
                     "mnu_Sign=Sign In\nLogin.Show\nLogin.locked=false\nChannel.Hide"));
    }
}

void TestDispatch::namesFillTheRoom()
{
    RecordingDesk desk;
    desk.enterRoom(u"me"_s);
    desk.hear(u":s 353 me @ #ROOM :~own &adm @op %half +voi  plain "_s);
    QCOMPARE(desk.channel.nicks.rows().join(u' '), u"+voi @adm @op @own half me plain"_s);
    QCOMPARE(desk.room.nicks.ChatterCount(), 7);
    desk.lists.visible = true;
    desk.take();
    desk.hear(u":s 349 me #room :End"_s); // shown already
    QCOMPARE(desk.take(), QStringList());
    desk.lists.visible = false;
    desk.variables.ListFetching = true;
    desk.take();
    desk.hear(u":s 367 me #room *!*@x op :123"_s);
    desk.hear(u":s 348 me #room *!*@y"_s);
    desk.hear(u":s 368 me #room :End"_s);
    desk.hear(u":s 367 me #room *!*@z op :123"_s); // nobody asked any more
    QCOMPARE(desk.take(),
             RecordingDesk::expected(
                 "ChannelInfo.AddBEI *!*@x|op|123\nChannelInfo.AddBEI *!*@y||\nChannelInfo.Show"));
}

void TestDispatch::topicIsShownWithoutItsFirstCharacter()
{
    RecordingDesk desk;
    desk.enterRoom();
    desk.hear(u":bob!u@h TOPIC #room :news  here"_s);
    QCOMPARE(desk.channel.topic.view.Text(), u"ews  here \r\n"_s);
    desk.hear(u":s 332 me #room :\x03"
              "4xy"_s);
    QCOMPARE(desk.channel.topic.view.runs(), u"<ff0000>y \r\n"_s);
}

void TestDispatch::nickChanges()
{
    RecordingDesk desk;
    desk.enterRoom();
    desk.queries.OpenQuery(u"bob"_s, {});
    desk.queries.OpenQuery(u"pal"_s, {});
    desk.take();
    desk.hear(u":BOB!u@h NICK :rob"_s); // known in the room: his window follows
    QCOMPARE(desk.take(), RecordingDesk::expected("Query1.Caption=rob\nQuery1.lblNick=rob\n"
                                                  "DataIn| {C}03{B}BOB{B} is now known as {B}rob"));
    QCOMPARE(desk.queries.FindQuery(u"rob"_s), 1);
    QCOMPARE(desk.channel.nicks.rows(), RecordingDesk::expected("@me\nrob"));
    desk.hear(u":pal!u@h NICK :chum"_s); // not in the room: keeps the old nick
    QCOMPARE(desk.take(), QStringList());
    QCOMPARE(desk.queries.FindQuery(u"pal"_s), 2);
    desk.hear(u":ME!u@h NICK :my"_s); // own nick in another case is somebody else
    QCOMPARE(desk.variables.MyNick, u"me"_s);
    desk.hear(u":s 433 * me :In use"_s);
    QCOMPARE(desk.variables.MyNick, QString());
    QCOMPARE(desk.variables.AltNick, QString());
    desk.variables.MyNick = u"set"_s + QString(252, QChar(u'\0')); // as the settings give it
    desk.take();
    desk.hear(u":s 433 * set :In use"_s);
    QCOMPARE(desk.take(), (QStringList{u"<< NICK "_s, u"usenick.Show"_s}));
}

void TestDispatch::privateWindows()
{
    RecordingDesk desk;
    desk.enterRoom();
    desk.hear(u":Al!u@h PRIVMSG me :first"_s);
    QCOMPARE(desk.take(),
             RecordingDesk::expected(
                 "Query1.Caption=Al\nQuery1.lblNick=Al\nQuery1.lblHost=u@h\n"
                 "Query1.Visible=true\nQuery1.Tag=1\nQuery1.Caption=Al\nQuery1.lblNick=Al\n"
                 "Query1.PutText Al: first"));
    desk.hear(u":AL!u@other PRIVMSG me :second"_s);
    QCOMPARE(desk.take(), RecordingDesk::expected(
                              "Query1.lblHost=u@other\nQuery1.Caption=AL\nQuery1.lblNick=AL\n"
                              "Query1.PutText AL: second"));
    QCOMPARE(desk.queries.Queries(1).QueryHost, u"u@other"_s);

    desk.ignored.AddItem(u"BAD - Blocked"_s);
    desk.hear(u":bad!u@h PRIVMSG me :let me in"_s);
    desk.hear(u":bad!u@h PRIVMSG #room :in the room it is heard"_s);
    QCOMPARE(desk.take(), RecordingDesk::expected("DataIn| {C}12<bad> in the room it is heard"));

    desk.mnu_pm_yes.setChecked(true); // private talk is off
    desk.hear(u":new!u@h PRIVMSG me :lost"_s);
    QCOMPARE(desk.take(), QStringList());
    desk.hear(u":al!u@h PRIVMSG me :third"_s);
    QCOMPARE(desk.take().last(), u"Query1.PutText al: third"_s);
}

void TestDispatch::wordWithCarriageReturn()
{
    RecordingDesk desk;
    desk.enterRoom();
    desk.channel.dataIn.view.setText({});
    desk.hear(u"JOIN"_s); // without a parameter nothing takes the CR off: no word matches
    QCOMPARE(desk.channel.dataIn.view.Text(), u"*** JOIN\r\n  \r\n"_s);
}

// Every word with nothing or too little behind it: the session goes on.
void TestDispatch::shortLines()
{
    RecordingDesk desk;
    desk.enterRoom();
    for (const char* word :
         {"001",  "002",  "join", "privmsg", "nick",  "part", "367", "368",    "353",
          "mode", "quit", "kick", "332",     "topic", "333",  "324", "notice", "433",
          "251",  "303",  "401",  "471",     "328",   "301",  "431", "432",    "307",
          "311",  "312",  "317",  "319",     "320",   "kill", "ping"}) {
        for (const QString& rest : {u""_s, u" "_s, u" :"_s, u" a"_s, u" a b"_s, u" #room"_s,
                                    u" me #room"_s, u" me #room +"_s}) {
            for (const QString& prefix : {u""_s, u":s "_s, u":n!u@h "_s, u":! "_s}) {
                desk.sock.setState(Winsock::Connected); // some of them end the session
                desk.hear(prefix + QLatin1StringView(word) + rest);
                QVERIFY(!desk.take().join(u'\n').contains("FATAL"_L1));
            }
        }
    }
    desk.sock.setState(Winsock::Connected);
    desk.hear(u"PING still here"_s);
    QCOMPARE(desk.take(), QStringList{u"<< PONG :still"_s});
}

QTEST_GUILESS_MAIN(TestDispatch)
#include "tst_dispatch.moc"
