#include "support/RecordingDesk.h"

#include <QTest>

using namespace Qt::StringLiterals;

// The one connection: every step of its life in order, and how the stream becomes lines.
class TestConnection final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void framing_data()
    {
        QTest::addColumn<QStringList>("chunks");
        QTest::addColumn<QString>("pieces"); // of each chunk, "|" between, "/" behind each chunk

        QTest::newRow("two lines") << QStringList{u"a\nb\n"_s} << u"a|b|/"_s;
        QTest::newRow("CR stays") << QStringList{u"a\r\nb\r\n"_s} << u"a\r|b\r|/"_s;
        QTest::newRow("in the middle") << QStringList{u"a"_s, u"b\n"_s} << u"/ab|/"_s;
        QTest::newRow("complete lines wait") << QStringList{u"a\nb"_s, u"c\n"_s} << u"/a|bc|/"_s;
        QTest::newRow("between CR and LF") << QStringList{u"a\r"_s, u"\nb\n"_s} << u"a\r/|b|/"_s;
        QTest::newRow("CR alone frames, LF alone splits")
            << QStringList{u"a\rb\r"_s} << u"a\rb\r/"_s;
    }

    void framing()
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

    void letters_data()
    {
        QTest::addColumn<QString>("charset");
        QTest::addColumn<QList<QByteArray>>("chunks");
        QTest::addColumn<QStringList>("lines");

        const QByteArray hidden = "gr\xC3\xBC\xC3\x9F"; // "gruess" in UTF-8
        QTest::newRow("each line for itself")
            << RecordingDesk::padded(u"utf-8"_s)
            << QList<QByteArray>{hidden + "\nna\xEFve \x80\n" + hidden + "\n"}
            << QStringList{u"grüß"_s, u"naïve €"_s, u"grüß"_s, QString()};
        QTest::newRow("one character in two reads, in a line or behind one")
            << RecordingDesk::padded(QString())
            << QList<QByteArray>{"\xD0", "\x9F\xD1", "\x80\n\xF0\x9F\n\x99\n\x82\n"}
            << QStringList{u"Пр"_s, u"ðŸ"_s, u"™"_s, u"‚"_s, QString()};
        QTest::newRow("outside the basic plane")
            << RecordingDesk::padded(u"utf-8"_s) << QList<QByteArray>{"\xF0\x9F\x99", "\x82\n"}
            << QStringList{u"🙂"_s, QString()};
        QTest::newRow("overlong, half a pair, cut off: no UTF-8")
            << RecordingDesk::padded(u"utf-8"_s)
            << QList<QByteArray>{"\xC0\xAF\n\xED\xA0\x81\n\xC3\n"}
            << QStringList{u"À¯"_s, u"í\u00a0\u0081"_s, u"Ã"_s, QString()};
        QTest::newRow("the old page")
            << RecordingDesk::padded(u"Windows-1252"_s) << QList<QByteArray>{hidden + "\n"}
            << QStringList{u"grÃ¼ÃŸ"_s, QString()};
    }

    void letters()
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

    void scenes_data()
    {
        QTest::addColumn<QString>("script"); // for RecordingDesk::play()

        const auto scene = [](const char* name, const QString& script) {
            QTest::newRow(name) << script;
        };
        scene("buffer survives a reconnect",
              u"~! register\n! arrive PING ol\n~! closed\n~! connect\n~! connected\n"
              "! arrive d x{N}PING new{N}\n<< PONG :old\n<< PONG :new"_s);
        // Chunks come in while lines of older ones are under way: the newest is done first,
        // nothing is lost, nothing is done twice.
        scene("chunks during a yield",
              u"~! register\n! onYield ! arrive PING 3 x{N}PING 4 x{N}\n"
              "! onYield ! arrive PING 5 x{N}PING 6\n! onYield ! arrive  x{N}\n"
              "! arrive PING 1 x{N}PING 2 x{N}\n"
              "<< PONG :3\n<< PONG :5\n<< PONG :6\n<< PONG :4\n<< PONG :1\n<< PONG :2"_s);
        scene("a line that fails costs only itself",
              u"~! enter @me bob\n"
              "! arrive :s MODE #room +o{N}PING a x{N}:s 333 me #room al soon{N}PING b x{N}\n"
              "DataIn| {C}03{B}s{B} sets mode: +o\n<< PONG :a\n<< PONG :b"_s);
        scene("sending", u"! debug\n! send dropped\n! state 9\n! send A :b\n<< A :b\n"
                         "DebugWin << A :b\n! send\n<< \nDebugWin << "_s);
        // Chunk by chunk, not line by line.
        scene("traffic log",
              u"~! register\n< PING a\n<< PONG :a\n! debug\n! arrive PING b x{N}PI\n"
              "DebugWin >> PING b x{N}PI\n! arrive NG c x{N}\nDebugWin >> NG c x{N}\n"
              "<< PONG :b\nDebugWin << PONG :b\n<< PONG :c\nDebugWin << PONG :c"_s);

        const auto attempt = [](const char* port) {
            return QString(u"sock.Close\nConnect.Caption=&Cancel\nident.Close\nident.Listen\n"
                           "DataIn| {C}02Connecting to {B}Quill Harbor Server{B} port {B}%1\n"
                           "sock.Connect irc.example:%1\nmnu_Sign=Sign Out\nLogin.locked=true\n"
                           "cmdCount= Total Chatters :  [ 0 ]\n"_s)
                .arg(QLatin1StringView(port));
        };
        scene("connecting, and giving up",
              "! server irc.example{0}{0}\n! connect\n"_L1 + attempt("6667") +
                  u"! port 8867\n! connect\nLogin.cmdSignout\nmnu_Sign=Sign In\nsock.Close\n"
                  "ident.Close\nText1=6667\nConnect.Caption=&Connect\n"
                  "DataIn| {C}05Connection attempt cancelled\nLogin.locked=false\n"
                  "cmdCount= Total Chatters :  [ 0 ]\n"
                  "~! caption something else\n! connect\ncmdCount= Total Chatters :  [ 0 ]"_s);
        // Lines are handled while it waits.
        scene("established",
              u"~! open pal\n~! connect\n! fullName A B{0}{0}\n! onPause < PING early\n"
              "! connected\nlstNicks.Clear\nQuery1.Unload\nConnect.Enabled=false\n"
              "Disconnect.Enabled=true\nConnect.Caption=&Connect\n"
              "DataIn| {C}03Attempting To Connect Quill Harbor Server\n<< NICK typed\n"
              "<< USER PC1Client-User:A B{0}{0}\nLogin.Log\nPause 0.5\n<< PONG :early\n"
              "Home /quillharbor\nPause 0.5\nMisc /quillmisc\n? windows=0"_s);
        const QString inRoom = u"~! enter @me bob\n~< :s MODE #room +n\n! port 7000\n"_s;
        scene("closed by the server",
              inRoom +
                  u"! closed\nDataIn| {C}02Disconnected by SERVER from irc.example\nsock.Close\n"
                  "ident.Close\nlstNicks.Clear\ncmdCount= Total Chatters :  [ 0 ]\n"
                  "Connect.Enabled=true\nConnect.Caption=&Connect\nDisconnect.Enabled=false\n"
                  "BuddyList.clear\nLogin.cmdSignout\nmnu_Sign=Sign In\nLogin.UnLog\n"
                  "? port=7000\n? retrying=0\n? modes=\n? chatters=0"_s);
        // Neither the modes nor the topic go with a failure.
        const QString failed = u"! error Refused\nConnect.Enabled=true\nDisconnect.Enabled=false\n"
                               "Connect.Caption=&Connect\nDataIn| {C}04ERROR : Refused\n"
                               "lstNicks.Clear\ncmdCount= Total Chatters :  [ 0 ]\nText1=8867\n"
                               "Login.cmdSignout\nmnu_Sign=Sign In\nLogin.UnLog\nfrmPopup.Show\n"
                               "frmPopup.Label2=Refused\nLogin.locked=false\n"_s;
        scene("failing for good", inRoom + "~< :s TOPIC #room :xnews\n! reconnect 0\n"_L1 + failed +
                                      u"? retrying=0\n? modes=+n\n? topic=<000000>news "_s);
        // Without limit, and on the other port.
        const QString again = failed + "? retrying=1\n! awaitRetry\n"_L1 + attempt("8867");
        scene("failing again and again",
              "~! connect\n"_L1 + again + again +
                  u"~! error x\n~! connected\n? retrying=0\n? port=8867\n~! error x\n"
                  "~! disconnect\n? retrying=1\n? port=6667\n! connect\n"_s +
                  attempt("6667") + "? retrying=0"_L1);
        const QString out = u"Connect.Enabled=true\nConnect.Caption=&Connect\n"
                            "Disconnect.Enabled=false\n"
                            "DataIn| {C}05You are Disconnected from Quill Harbor Server\n"
                            "sock.Close\nlstNicks.Clear\nText1=6667\n"
                            "cmdCount= Total Chatters :  [ 0 ]\nLogin.UnLog\nLogin.cmdSignout\n"
                            "mnu_Sign=Sign In\nLogin.locked=false\n"_s;
        scene("disconnecting",
              inRoom + "! quitMsg gone{0}{0}\n! disconnect\n<< QUIT :gone{0}{0}\n"_L1 + out +
                  "? ident=2\n? modes=\n? chatters=0\n! disconnect\n"_L1 + out);
        scene("terminating",
              u"~! register\n~! open a\n~! open b\n~! open c\n~! unload 2\n? yields=4\n"
              "! terminate\n<< QUIT :gone\nident.Close\nsock.Close\nunloadSmallForms\n"
              "Query1.Unload\nQuery3.Unload\nEnd\n? yields=20"_s);
        scene("ident fails", u"! identError Refused\nDataIn| {C}04IDENT Error {C}Refused"_s);
    }
    void scenes()
    {
        QFETCH(QString, script);
        RecordingDesk desk;
        SessionVariables& variables = desk.variables;
        desk.connection.setRetryInterval(1);
        desk.acts[u"debug"_s] = [&](const QString&) { desk.forms.debugVisible = true; };
        desk.acts[u"send"_s] = [&](const QString& line) { desk.connection.SendData(line); };
        desk.acts[u"server"_s] = [&](const QString& host) { variables.ServerHost = host; };
        desk.acts[u"fullName"_s] = [&](const QString& name) { variables.FullName = name; };
        desk.acts[u"quitMsg"_s] = [&](const QString& text) { variables.QuitMsg = text; };
        desk.acts[u"reconnect"_s] = [&](const QString&) { variables.Reconnect = false; };
        desk.acts[u"caption"_s] = [&](const QString& text) {
            desk.channel.connectEntry.setCaption(text);
        };
        desk.acts[u"awaitRetry"_s] = [&](const QString&) {
            QTRY_VERIFY(!desk.connection.isWaitingToRetry());
        };
        desk.acts[u"identError"_s] = [&](const QString& why) {
            Q_EMIT desk.ident.ErrorEvent(1, why);
        };
        desk.looks[u"ident"_s] = [&] { return QString::number(desk.ident.state()); };
        desk.looks[u"yields"_s] = [&] { return QString::number(desk.events.yields); };
        QCOMPARE(desk.play(script), QString());
    }

    void networkOfToday()
    {
        RecordingDesk desk;
        desk.connection.setRetryInterval(1);
        desk.variables.ServerHost = RecordingDesk::padded(u"ircs://irc.example:7000"_s);
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

    void noServerOfLines()
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

    void wrongAddress()
    {
        RecordingDesk desk;
        desk.variables.ServerHost = RecordingDesk::padded(u"http://irc.example"_s);
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

    void ident_data()
    {
        QTest::addColumn<QString>("question");
        QTest::addColumn<QStringList>("answers");

        const QString name = RecordingDesk::padded(u"QHM"_s);
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
            << QStringList{u"DataIn| *** IDENT : "_s,
                           "ident.SendData  : USERID : UNIX : "_L1 + name,
                           u"DataIn| *** IDENT reply :  : USERID : UNIX : QHM"_s, u"ident.Close"_s};
    }

    void ident()
    {
        QFETCH(QString, question);
        QFETCH(QStringList, answers);
        RecordingDesk desk;
        desk.variables.IdentName = RecordingDesk::padded(u"QHM"_s);
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
};

QTEST_GUILESS_MAIN(TestConnection)
#include "tst_connection.moc"
