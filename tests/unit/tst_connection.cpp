#include "support/RecordingDesk.h"

#include <QTest>

using namespace Qt::StringLiterals;

// The one connection: every step of its life in order, and how the stream becomes lines.
class TestConnection final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void framing_data();
    void framing();
    void letters_data();
    void letters();
    void bufferSurvivesAReconnect();
    void secondChunkDuringAYield();
    void failingLineCostsOnlyItself();
    void sending();
    void trafficLog();

    void connecting();
    void cancelling();
    void established();
    void closedByServer();
    void failing();
    void fallbackPortAndRetry();
    void disconnecting();
    void terminating();
    void networkOfToday();
    void noServerOfLines();
    void wrongAddress();
    void ident_data();
    void ident();
    void identFails();
};

namespace {

QString padded(const QString& text)
{
    return text + QString(255 - text.size(), QChar(u'\0'));
}

} // namespace

void TestConnection::framing_data()
{
    QTest::addColumn<QStringList>("chunks");
    QTest::addColumn<QString>("pieces"); // of each chunk, "|" between, "/" behind each chunk

    QTest::newRow("two lines") << QStringList{u"a\nb\n"_s} << u"a|b|/"_s;
    QTest::newRow("CR stays") << QStringList{u"a\r\nb\r\n"_s} << u"a\r|b\r|/"_s;
    QTest::newRow("in the middle") << QStringList{u"a"_s, u"b\n"_s} << u"/ab|/"_s;
    QTest::newRow("complete lines wait") << QStringList{u"a\nb"_s, u"c\n"_s} << u"/a|bc|/"_s;
    QTest::newRow("between CR and LF") << QStringList{u"a\r"_s, u"\nb\n"_s} << u"a\r/|b|/"_s;
    QTest::newRow("CR alone frames, LF alone splits") << QStringList{u"a\rb\r"_s} << u"a\rb\r/"_s;
}

void TestConnection::framing()
{
    QFETCH(QStringList, chunks);
    RecordingDesk desk;
    desk.sock.setState(Winsock::Connected);
    QString pieces;
    QStringList ofChunk;
    desk.connection.setInterpreter([&](const QString& line) { ofChunk += line; });
    for (const QString& chunk : chunks) {
        desk.sock.arrive(chunk);
        pieces += std::exchange(ofChunk, {}).join(u'|') + u'/';
    }
    QTEST(pieces, "pieces");
}

void TestConnection::letters_data()
{
    QTest::addColumn<QString>("charset");
    QTest::addColumn<QList<QByteArray>>("chunks");
    QTest::addColumn<QStringList>("lines");

    const QByteArray hidden = "gr\xC3\xBC\xC3\x9F"; // "gruess" in UTF-8
    QTest::newRow("each line for itself")
        << padded(u"utf-8"_s) << QList<QByteArray>{hidden + "\nna\xEFve \x80\n" + hidden + "\n"}
        << QStringList{u"grüß"_s, u"naïve €"_s, u"grüß"_s, QString()};
    QTest::newRow("one character in two reads, in a line or behind one")
        << padded(QString())
        << QList<QByteArray>{"\xD0", "\x9F\xD1", "\x80\n\xF0\x9F\n\x99\n\x82\n"}
        << QStringList{u"Пр"_s, u"ðŸ"_s, u"™"_s, u"‚"_s, QString()};
    QTest::newRow("outside the basic plane")
        << padded(u"utf-8"_s) << QList<QByteArray>{"\xF0\x9F\x99", "\x82\n"}
        << QStringList{u"🙂"_s, QString()};
    QTest::newRow("overlong, half a pair, cut off: no UTF-8")
        << padded(u"utf-8"_s) << QList<QByteArray>{"\xC0\xAF\n\xED\xA0\x81\n\xC3\n"}
        << QStringList{u"À¯"_s, u"í\u00a0\u0081"_s, u"Ã"_s, QString()};
    QTest::newRow("the old page") << padded(u"Windows-1252"_s) << QList<QByteArray>{hidden + "\n"}
                                  << QStringList{u"grÃ¼ÃŸ"_s, QString()};
}

void TestConnection::letters()
{
    QFETCH(QString, charset);
    QFETCH(QList<QByteArray>, chunks);
    RecordingDesk desk;
    desk.variables.Charset = charset;
    desk.connection.mnu_File_Connect_Click();
    desk.sock.beConnected();
    desk.take();
    QStringList lines;
    desk.connection.setInterpreter([&](const QString& line) { lines += line; });
    for (const QByteArray& chunk : chunks)
        desk.sock.arrive(chunk);
    QTEST(lines, "lines");
    // What goes out is in the same letters; without such a letter it is "?".
    const bool isOld = charset.startsWith(u'W');
    desk.connection.SendData(u"ü🙂"_s);
    QCOMPARE(desk.sock.lastSent, isOld ? "\xFC??\n" : "\xC3\xBC\xF0\x9F\x99\x82\n");
}

void TestConnection::bufferSurvivesAReconnect()
{
    RecordingDesk desk;
    desk.register_();
    desk.sock.arrive(u"PING ol"_s);
    Q_EMIT desk.sock.CloseEvent();
    desk.connection.mnu_File_Connect_Click();
    desk.sock.beConnected();
    desk.take();
    desk.sock.arrive(u"d x\nPING new\n"_s);
    QCOMPARE(desk.take(), RecordingDesk::expected("<< PONG :old\n<< PONG :new"));
}

void TestConnection::secondChunkDuringAYield()
{
    RecordingDesk desk;
    desk.register_();
    // Chunks come in while lines of older ones are under way: the newest is done first, nothing is
    // lost, nothing is done twice.
    desk.events.onYield << [&] { desk.sock.arrive(u"PING 3 x\nPING 4 x\n"_s); } <<
        [&] { desk.sock.arrive(u"PING 5 x\nPING 6"_s); } << [&] { desk.sock.arrive(u" x\n"_s); };
    desk.sock.arrive(u"PING 1 x\nPING 2 x\n"_s);
    QCOMPARE(desk.take().join(u' ').remove("<< PONG :"_L1), u"3 5 6 4 1 2"_s);
}

void TestConnection::failingLineCostsOnlyItself()
{
    RecordingDesk desk;
    desk.enterRoom();
    desk.sock.arrive(u":s MODE #room +o\nPING a x\n:s 333 me #room al soon\nPING b x\n"_s);
    QStringList journal = desk.take();
    journal.removeFirst(); // the mode line is shown before it fails
    QCOMPARE(journal, RecordingDesk::expected("<< PONG :a\n<< PONG :b"));
}

void TestConnection::sending()
{
    RecordingDesk desk;
    desk.forms.debugVisible = true;
    desk.connection.SendData(u"dropped"_s);
    desk.sock.setState(Winsock::Failed); // any state but closed will do
    desk.connection.SendData(u"A :b"_s);
    desk.connection.SendData({});
    QCOMPARE(desk.take(),
             QStringList({u"<< A :b"_s, u"DebugWin << A :b"_s, u"<< "_s, u"DebugWin << "_s}));
}

void TestConnection::trafficLog()
{
    RecordingDesk desk;
    desk.register_();
    desk.hear(u"PING a"_s);
    desk.forms.debugVisible = true;
    desk.sock.arrive(u"PING b x\nPI"_s); // chunk by chunk, not line by line
    desk.sock.arrive(u"NG c x\n"_s);
    QCOMPARE(desk.take(),
             (QStringList{u"<< PONG :a"_s, u"DebugWin >> PING b x\nPI"_s, u"DebugWin >> NG c x\n"_s,
                          u"<< PONG :b"_s, u"DebugWin << PONG :b"_s, u"<< PONG :c"_s,
                          u"DebugWin << PONG :c"_s}));
}

void TestConnection::connecting()
{
    RecordingDesk desk;
    desk.variables.ServerHost = padded(u"irc.example"_s);
    desk.connection.mnu_File_Connect_Click();
    QCOMPARE(desk.take(),
             RecordingDesk::expected(
                 "sock.Close\nConnect.Caption=&Cancel\nident.Close\nident.Listen\n"
                 "DataIn| {C}02Connecting to {B}Quill Harbor Server{B} port {B}6667\n"
                 "sock.Connect irc.example:6667\nmnu_Sign=Sign Out\nLogin.locked=true\n"
                 "cmdCount= Total Chatters :  [ 0 ]"));
}

void TestConnection::cancelling()
{
    RecordingDesk desk;
    desk.channel.Text1 = u"8867"_s;
    desk.connection.mnu_File_Connect_Click();
    desk.take();
    desk.connection.mnu_File_Connect_Click();
    QCOMPARE(desk.take(),
             RecordingDesk::expected(
                 "Login.cmdSignout\nmnu_Sign=Sign In\nsock.Close\nident.Close\nText1=6667\n"
                 "Connect.Caption=&Connect\nDataIn| {C}05Connection attempt cancelled\n"
                 "Login.locked=false\ncmdCount= Total Chatters :  [ 0 ]"));
    desk.channel.connectEntry.setCaption(u"something else"_s);
    desk.take();
    desk.connection.mnu_File_Connect_Click();
    QCOMPARE(desk.take(), QStringList{u"cmdCount= Total Chatters :  [ 0 ]"_s});
}

void TestConnection::established()
{
    RecordingDesk desk;
    desk.queries.OpenQuery(u"pal"_s, {});
    desk.connection.mnu_File_Connect_Click();
    desk.take();
    desk.variables.FullName = padded(u"A B"_s);
    // Lines are handled while it waits.
    desk.events.onPause << [&] { desk.hear(u"PING early"_s); };
    desk.sock.beConnected();
    QCOMPARE(desk.take(), RecordingDesk::expected({
                              u"lstNicks.Clear"_s,
                              u"Query1.Unload"_s,
                              u"Connect.Enabled=false"_s,
                              u"Disconnect.Enabled=true"_s,
                              u"Connect.Caption=&Connect"_s,
                              u"DataIn| {C}03Attempting To Connect Quill Harbor Server"_s,
                              u"<< NICK typed"_s,
                              "<< USER PC1Client-User:"_L1 + padded(u"A B"_s),
                              u"Login.Log"_s,
                              u"Pause 0.5"_s,
                              u"<< PONG :early"_s,
                              u"Home /quillharbor"_s,
                              u"Pause 0.5"_s,
                              u"Misc /quillmisc"_s,
                          }));
    QCOMPARE(desk.queries.QueryCount(), 0);
}

void TestConnection::closedByServer()
{
    RecordingDesk desk;
    desk.enterRoom();
    desk.hear(u":s MODE #room +n"_s);
    desk.channel.Text1 = u"8867"_s;
    desk.take();
    Q_EMIT desk.sock.CloseEvent();
    QCOMPARE(desk.take(),
             RecordingDesk::expected(
                 "DataIn| {C}02Disconnected by SERVER from irc.example\nsock.Close\n"
                 "ident.Close\nlstNicks.Clear\ncmdCount= Total Chatters :  [ 0 ]\n"
                 "Connect.Enabled=true\nConnect.Caption=&Connect\nDisconnect.Enabled=false\n"
                 "BuddyList.clear\nLogin.cmdSignout\nmnu_Sign=Sign In\nLogin.UnLog"));
    QCOMPARE(desk.channel.Text1, u"8867"_s); // the port stays
    QVERIFY(!desk.connection.isWaitingToRetry());
    QCOMPARE(desk.room.modes.ModeText(), QString());
    QCOMPARE(desk.room.nicks.ChatterCount(), 0);
}

void TestConnection::failing()
{
    RecordingDesk desk;
    desk.enterRoom();
    desk.hear(u":s MODE #room +n"_s);
    desk.hear(u":s TOPIC #room :xnews"_s);
    desk.variables.Reconnect = false; // the retries have a test of their own
    desk.take();
    Q_EMIT desk.sock.ErrorEvent(10061, u"Refused"_s);
    QCOMPARE(desk.take(),
             RecordingDesk::expected(
                 "Connect.Enabled=true\nDisconnect.Enabled=false\nConnect.Caption=&Connect\n"
                 "DataIn| {C}04ERROR : Refused\nlstNicks.Clear\n"
                 "cmdCount= Total Chatters :  [ 0 ]\nText1=8867\nLogin.cmdSignout\n"
                 "mnu_Sign=Sign In\nLogin.UnLog\nfrmPopup.Show\nfrmPopup.Label2=Refused\n"
                 "Login.locked=false"));
    QCOMPARE(desk.connection.isWaitingToRetry(), false);
    // Neither the modes nor the topic go with a failure.
    QCOMPARE(desk.room.modes.ModeText(), u"+n"_s);
    QCOMPARE(desk.channel.topic.view.Text(), u"news \r\n"_s);
}

void TestConnection::fallbackPortAndRetry()
{
    RecordingDesk desk;
    desk.connection.setRetryInterval(1);
    desk.connection.mnu_File_Connect_Click();
    Q_EMIT desk.sock.ErrorEvent(1, u"x"_s);
    QStringList seen;
    const auto attempted = [&] {
        seen += desk.take();
        return seen.contains("sock.Connect irc.example:8867"_L1);
    };
    QTRY_VERIFY(attempted());
    QVERIFY(!desk.connection.isWaitingToRetry());
    QCOMPARE(desk.channel.connectEntry.Caption(), u"&Cancel"_s);
    seen.clear();
    Q_EMIT desk.sock.ErrorEvent(1, u"x"_s);
    QTRY_VERIFY(attempted()); // and again, without limit
    Q_EMIT desk.sock.ErrorEvent(1, u"x"_s);
    desk.sock.beConnected();
    QVERIFY(!desk.connection.isWaitingToRetry());
    QCOMPARE(desk.channel.Text1, u"8867"_s);
    Q_EMIT desk.sock.ErrorEvent(1, u"x"_s);
    desk.connection.mnu_File_Disconnect_Click(); // does not touch the timer
    QVERIFY(desk.connection.isWaitingToRetry());
    QCOMPARE(desk.channel.Text1, u"6667"_s);
    desk.connection.mnu_File_Connect_Click();
    QVERIFY(!desk.connection.isWaitingToRetry());
    QVERIFY(desk.take().contains("sock.Connect irc.example:6667"_L1));
}

void TestConnection::disconnecting()
{
    RecordingDesk desk;
    desk.enterRoom();
    desk.hear(u":s MODE #room +n"_s);
    desk.variables.QuitMsg = padded(u"gone"_s);
    desk.channel.Text1 = u"8867"_s;
    desk.take();
    desk.connection.mnu_File_Disconnect_Click();
    QCOMPARE(desk.take(), RecordingDesk::expected({
                              "<< QUIT :"_L1 + padded(u"gone"_s),
                              u"Connect.Enabled=true"_s,
                              u"Connect.Caption=&Connect"_s,
                              u"Disconnect.Enabled=false"_s,
                              u"DataIn| {C}05You are Disconnected from Quill Harbor Server"_s,
                              u"sock.Close"_s,
                              u"lstNicks.Clear"_s,
                              u"Text1=6667"_s,
                              u"cmdCount= Total Chatters :  [ 0 ]"_s,
                              u"Login.UnLog"_s,
                              u"Login.cmdSignout"_s,
                              u"mnu_Sign=Sign In"_s,
                              u"Login.locked=false"_s,
                          }));
    QCOMPARE(desk.ident.state(), Winsock::Listening); // as it was
    QCOMPARE(desk.room.modes.ModeText(), QString());
    desk.connection.mnu_File_Disconnect_Click();
    QVERIFY(desk.take().first().startsWith("Connect.Enabled"_L1)); // no QUIT on a dead connection
}

void TestConnection::terminating()
{
    RecordingDesk desk;
    desk.register_();
    for (const QString& nick : {u"a"_s, u"b"_s, u"c"_s})
        desk.queries.OpenQuery(nick, {});
    desk.queries.Queries(2).Unload();
    desk.take();
    desk.events.yields = 0;
    desk.connection.mnu_terminate_Click();
    QCOMPARE(desk.take(),
             RecordingDesk::expected(
                 "<< QUIT :gone\nident.Close\nsock.Close\nunloadSmallForms\nQuery1.Unload\n"
                 "Query3.Unload\nEnd"));
    QCOMPARE(desk.events.yields, 16);
}

void TestConnection::networkOfToday()
{
    RecordingDesk desk;
    desk.connection.setRetryInterval(1);
    desk.variables.ServerHost = padded(u"ircs://irc.example:7000"_s);
    desk.login.Text3 = u"secret"_s;
    const auto entries = [&](const char* head) {
        return desk.take().filter(QLatin1StringView(head));
    };
    desk.connection.mnu_File_Connect_Click();
    QCOMPARE(entries("sock.Connect"), QStringList{u"sock.Connect irc.example:7000 by TLS"_s});
    Q_EMIT desk.sock.ErrorEvent(1, u"x"_s);
    desk.take();
    QStringList attempts; // on its own port, every one of them
    QTRY_COMPARE(attempts += entries("sock.Connect"),
                 QStringList{u"sock.Connect irc.example:7000 by TLS"_s});
    desk.sock.beConnected();
    QCOMPARE(entries("sock.SendData"),
             (QStringList{u"sock.SendData CAP LS 302\r\n"_s, u"sock.SendData NICK typed\r\n"_s,
                          u"sock.SendData USER PC1Clien 0 * :A B\r\n"_s}));
    // Lines of this conversation are nobody else's; a nick that is cut is the one from then on.
    desk.sock.arrive(u":s CAP * LS :a\n:s 001 type :Welcome\n:s 002 type :Your host\n"_s);
    QStringList sent = entries("sock.SendData");
    QCOMPARE(sent.takeFirst(), u"sock.SendData CAP END\r\n"_s);
    QCOMPARE(sent.takeFirst(), u"sock.SendData MODE type +i\r\n"_s);
    QCOMPARE(sent.takeLast(), u"sock.SendData PRIVMSG NickServ :IDENTIFY secret\r\n"_s);
    // Without TLS a password is for the nickname service alone.
    desk.connection.mnu_File_Disconnect_Click();
    QCOMPARE(entries("sock.SendData").last(), u"sock.SendData QUIT gone\r\n"_s);
    desk.variables.ServerHost = u"irc://[::1]"_s;
    desk.connection.mnu_File_Connect_Click();
    QCOMPARE(entries("sock.Connect"), QStringList{u"sock.Connect ::1:6667"_s});
    desk.sock.beConnected();
    QVERIFY(entries("CAP").isEmpty());
}

void TestConnection::noServerOfLines()
{
    RecordingDesk desk;
    desk.variables.ServerHost = u"irc://irc.example:6697"_s;
    desk.connection.mnu_File_Connect_Click();
    desk.sock.beConnected();
    desk.sock.arrive(QByteArray("\x15\x03\x01"));
    desk.take();
    Q_EMIT desk.sock.CloseEvent();
    const QString told = desk.take().join(u'\n');
    QVERIFY2(told.contains("ircs://irc.example:6697"_L1), qPrintable(told));
    QVERIFY(told.contains("ERROR : "_L1) && desk.connection.isWaitingToRetry());
    desk.connection.mnu_File_Connect_Click();
    desk.sock.beConnected();
    desk.take();
    desk.sock.arrive(u"PING x\n"_s); // and nothing of the other server stands before it
    QCOMPARE(desk.take(), QStringList{u"sock.SendData PONG x\r\n"_s});
}

void TestConnection::wrongAddress()
{
    RecordingDesk desk;
    desk.variables.ServerHost = padded(u"http://irc.example"_s);
    desk.connection.mnu_File_Connect_Click();
    QString journal = desk.take().join(u'\n');
    QVERIFY(journal.contains("Login.locked=true"_L1));
    QVERIFY(!journal.contains("sock.Connect"_L1));
    QTRY_VERIFY(desk.connection.isWaitingToRetry());
    journal = desk.take().join(u'\n');
    QVERIFY2(journal.contains("ERROR : \"http://\""_L1), qPrintable(journal));
    QVERIFY(!journal.contains("sock.SendData"_L1) && journal.contains("Login.locked=false"_L1));
    // Given up at once, it is not told.
    desk.connection.mnu_File_Connect_Click();
    desk.connection.mnu_File_Connect_Click();
    desk.take();
    QCoreApplication::processEvents();
    QCOMPARE(desk.take(), QStringList());
}

void TestConnection::ident_data()
{
    QTest::addColumn<QString>("question");
    QTest::addColumn<QStringList>("answers");

    const QString name = padded(u"QHM"_s);
    QTest::newRow("says nothing") << QString() << QStringList();
    QTest::newRow("pair with a blank")
        << u"46887, 6667\r\n"_s
        << QStringList{u"DataIn| *** IDENT : 46887, 6667"_s,
                       "ident.SendData 46887, 6667 : USERID : UNIX : "_L1 + name,
                       u"DataIn| *** IDENT reply : 46887, 6667 : USERID : UNIX : QHM"_s,
                       u"ident.Close"_s};
    const QString styled = u'\x02' + QString(40000, u'1');
    QTest::newRow("too long to be shown")
        << styled + ", 2\r\n"_L1
        << QStringList{"ident.SendData "_L1 + styled + ", 2 : USERID : UNIX : "_L1 + name,
                       u"ident.Close"_s};
    QTest::newRow("anything with a comma and a blank")
        << u", "_s
        << QStringList{u"DataIn| *** IDENT : "_s, "ident.SendData  : USERID : UNIX : "_L1 + name,
                       u"DataIn| *** IDENT reply :  : USERID : UNIX : QHM"_s, u"ident.Close"_s};
}

void TestConnection::ident()
{
    QFETCH(QString, question);
    QFETCH(QStringList, answers);
    RecordingDesk desk;
    desk.variables.IdentName = padded(u"QHM"_s);
    desk.ident.RemotePort = 40001;
    if (!question.isEmpty())
        desk.events.onYield << [] {} << [&] { desk.ident.arrive(question); };
    Q_EMIT desk.ident.ConnectionRequest(7);
    const QStringList journal = desk.take();
    QCOMPARE(journal.mid(0, 3), (QStringList{u"ident.Close"_s, u"ident.Accept 7"_s,
                                             "ident.SendData 113, 40001 : USERID : UNIX : "_L1 +
                                                 desk.variables.IdentName + "\r\n"_L1}));
    QCOMPARE(journal.last(), u"ident.Close"_s);
    const QStringList between = journal.mid(3, journal.size() - 4);
    QCOMPARE(between, RecordingDesk::expected(answers));
    QCOMPARE(desk.events.yields, 500);
}

void TestConnection::identFails()
{
    RecordingDesk desk;
    Q_EMIT desk.ident.ErrorEvent(1, u"Refused"_s);
    QCOMPARE(desk.take(), RecordingDesk::expected("DataIn| {C}04IDENT Error {C}Refused"));
}

QTEST_GUILESS_MAIN(TestConnection)
#include "tst_connection.moc"
