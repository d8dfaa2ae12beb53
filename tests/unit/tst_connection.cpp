#include "support/RecordingDesk.h"

using namespace Qt::StringLiterals;

// The one connection: every step of its life in order, and how the stream becomes lines.
class TestConnection final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void letters_data()
    {
        QTest::addColumn<QString>("charset");
        QTest::addColumn<QList<QByteArray>>("chunks");
        QTest::addColumn<QStringList>("lines");

        const QByteArray hidden = "gr\xC3\xBC\xC3\x9F"; // "gruess" in UTF-8
        QTest::newRow("each line for itself")
            << RecordingDesk::padded(u"utf-8"_s)
            << QList<QByteArray>{hidden + "\nna\xEFve \x80\n\xF0\x9F\x99", "\x82\n"}
            << QStringList{u"grüß"_s, u"naïve €"_s, u"🙂"_s, QString()};
        QTest::newRow("one character in two reads, in a line or behind one")
            << RecordingDesk::padded(QString())
            << QList<QByteArray>{"\xD0", "\x9F\xD1", "\x80\n\xF0\x9F\n\x99\n\x82\n"}
            << QStringList{u"Пр"_s, u"ðŸ"_s, u"™"_s, u"‚"_s, QString()};
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
        const Scenes scene;
        // What ends with the last chunk is taken apart at its line feeds.
        const QString lines = u"! state 7\n! listLines\n"_s;
        scene("CR stays", lines + u"! arrive a\r{N}b\r{N}\n- a\r\n- b\r"_s);
        scene("in the middle", lines + u"! arrive a\n! arrive b{N}\n- ab"_s);
        scene("complete lines wait", lines + u"! arrive a{N}b\n! arrive c{N}\n- a\n- bc"_s);
        scene("between CR and LF", lines + u"! arrive a\r\n- a\r\n! arrive {N}b{N}\n- b"_s);
        scene("CR alone frames", lines + u"! arrive a\rb\r\n- a\rb\r"_s);
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
                  u"? report=Connecting|||\n! port 8867\n! "
                  u"connect\nLogin.cmdSignout\nmnu_Sign=Sign In\nsock.Close\n"
                  "ident.Close\nText1=6667\nConnect.Caption=&Connect\n"
                  "DataIn| {C}05Connection attempt cancelled\nLogin.locked=false\n"
                  "cmdCount= Total Chatters :  [ 0 ]\n? report=Cancelled|||"_s);
        scene(
            "established",
            u"~! open pal\n~! connect\n! fullName A B{0}{0}\n! onPause < PING early\n"
            "! connected\nlstNicks.Clear\nQuery1.Unload\nConnect.Enabled=false\n"
            "Disconnect.Enabled=true\nConnect.Caption=&Connect\n"
            "DataIn| {C}03Attempting To Connect Quill Harbor Server\n<< NICK typed\n"
            "<< USER PC1Client-User:A B{0}{0}\nLogin.Log\nPause 0.5\n<< PONG :early\n"
            "Home /quillharbor\nPause 0.5\nMisc /quillmisc\n? windows=0\n? report=Connected|||"_s);
        const QString inRoom = u"~! enter @me bob\n~< :s MODE #room +n\n! port 7000\n"_s;
        scene("closed by the server",
              inRoom + u"~< ERROR :Closing link\n! closed\nDataIn| {C}02Disconnected by SERVER "
                       u"from irc.example\nsock.Close\n"
                       "ident.Close\nlstNicks.Clear\ncmdCount= Total Chatters :  [ 0 ]\n"
                       "Connect.Enabled=true\nConnect.Caption=&Connect\nDisconnect.Enabled=false\n"
                       "BuddyList.clear\nLogin.cmdSignout\nmnu_Sign=Sign In\nLogin.UnLog\n"
                       "? port=7000\n? retrying=0\n? modes=\n? chatters=0\n? "
                       "report=ServerClosed||Closing link|\n"
                       "~! connect\n~! connected\n~! closed\n? report=ServerClosed|||"_s);
        // Neither the modes nor the topic go with a failure.
        const QString failed = u"! error Refused\nConnect.Enabled=true\nDisconnect.Enabled=false\n"
                               "Connect.Caption=&Connect\nDataIn| {C}04ERROR : Refused\n"
                               "lstNicks.Clear\ncmdCount= Total Chatters :  [ 0 ]\nText1=8867\n"
                               "Login.cmdSignout\nmnu_Sign=Sign In\nLogin.UnLog\nfrmPopup.Show\n"
                               "frmPopup.Label2=Refused\nLogin.locked=false\n"_s;
        scene("failing for good",
              inRoom + "~< :s TOPIC #room :xnews\n! reconnect 0\n"_L1 + failed +
                  u"? retrying=0\n? modes=+n\n? topic=<000000>news \n? report=Failed||Refused|"_s);
        // Without limit, and on the other port.
        const QString again = failed +
                              "? retrying=1\n? report=Failed||Refused|again\n! awaitRetry\n"_L1 +
                              attempt("8867");
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
                  "? ident=2\n? report=SignedOut|||\n? modes=\n? chatters=0\n! disconnect\n"_L1 +
                  out);
        scene("terminating",
              u"~! register\n~! open a\n~! open b\n~! open c\n~! unload 2\n? yields=4\n"
              "! terminate\n<< QUIT :gone\nident.Close\nsock.Close\nunloadSmallForms\n"
              "Query1.Unload\nQuery3.Unload\nEnd\n? yields=20"_s);
        // On its own port, every time; a nick that is cut is the one from then on.
        scene("network of today",
              u"! server ircs://irc.example:7000{0}\n! password secret\n~! connect\n"
              "? attempt=irc.example:7000 by TLS\n~! error x\n~! awaitRetry\n"
              "? attempt=irc.example:7000 by TLS\n? port=8867\n~! connected\n"
              "? sent=CAP LS 302\r|NICK typed\r|USER PC1Clien 0 * :A B\r\n"
              "~! arrive :s CAP * LS :a{N}:s 001 type :Welcome{N}:s 002 type :Your host{N}\n"
              "? sent=CAP END\r|MODE type +i\r|JOIN #room\r|PRIVMSG NickServ :IDENTIFY secret\r\n"
              "~! disconnect\n? sent=QUIT gone\r\n"
              // Without TLS a password is for the nickname service alone.
              "! server irc://[::1]\n~! connect\n? attempt=::1:6667\n~! connected\n"
              "? sent=NICK typed\r|USER PC1Clien 0 * :A B\r"_s);
        const QString silent = u"irc.example ended the connection without a word. It may take TLS "
                               "only: the address is ircs://irc.example:6697 then."_s;
        scene(
            "no server of lines",
            "! server irc://irc.example:6697\n~! connect\n~! connected\n"
            "? sent=NICK typed\r|USER PC1Clien 0 * :A B\r\n~! arrive \x15\x03\x01\n! closed\n"_L1 +
                QString(failed)
                    .replace("Refused"_L1, silent)
                    .remove("! error "_L1 + silent + u'\n') +
                u"? retrying=1\n~! connect\n~! connected\n~! arrive PING x{N}\n"
                "? sent=NICK typed\r|USER PC1Clien 0 * :A B\r|PONG x\r"_s);
        const QString wrong = ServerAddress::parse(u"http://irc.example"_s).error;
        // Given up at once, it is not told.
        scene(
            "wrong address",
            "! server http://irc.example\n! connect\n"_L1 +
                attempt("6667").remove("sock.Connect irc.example:6667\n"_L1) +
                "! awaitFailure\n"_L1 +
                QString(failed).replace("Refused"_L1, wrong).remove("! error "_L1 + wrong + u'\n') +
                u"? retrying=1\n~! connect\n~! connect\n! processEvents\n? retrying=0"_s);

        const QString asked = u"! ask\nident.Close\nident.Accept 7\n"
                              "ident.SendData 113, 40001 : USERID : UNIX : QHM{0}\r\n"_s;
        const QString answer = u" : USERID : UNIX : QHM"_s;
        const auto ident = [&](const char* name, const QString& question, const QString& told) {
            scene(name, "! identName QHM{0}\n! onYield ! question "_L1 + question + u'\n' + asked +
                            told + "ident.Close\n? yields=500"_L1);
        };
        ident("ident, nothing asked", {}, {});
        ident("ident", u"46887, 6667\r{N}"_s,
              u"DataIn| *** IDENT : 46887, 6667\nident.SendData 46887, 6667"_s + answer +
                  u"{0}\nDataIn| *** IDENT reply : 46887, 6667"_s + answer + u"\nident.Close\n"_s);
        const QString endless = u"{B}"_s + QString(40000, u'1') + u", 2"_s; // too long to be shown
        ident("ident, endless", endless + u"\r{N}"_s,
              "ident.SendData "_L1 + endless + answer + u"{0}\nident.Close\n"_s);
        scene("ident fails", u"! identError Refused\nDataIn| {C}04IDENT Error {C}Refused"_s);
    }
    void scenes()
    {
        QFETCH(QString, script);
        RecordingDesk desk;
        SessionVariables& variables = desk.variables;
        desk.connection.setRetryInterval(1);
        desk.acts[u"debug"_s] = [&](auto) { desk.forms.debugVisible = true; };
        desk.acts[u"send"_s] = [&](auto line) { desk.connection.SendData(line); };
        desk.acts[u"server"_s] = [&](auto host) { variables.ServerHost = host; };
        desk.acts[u"fullName"_s] = [&](auto name) { variables.FullName = name; };
        desk.acts[u"quitMsg"_s] = [&](auto text) { variables.QuitMsg = text; };
        desk.acts[u"reconnect"_s] = [&](auto) { variables.Reconnect = false; };
        desk.acts[u"awaitRetry"_s] = [&](auto) {
            QTRY_VERIFY(!desk.connection.isWaitingToRetry());
        };
        desk.acts[u"awaitFailure"_s] = [&](auto) {
            QTRY_VERIFY(desk.connection.isWaitingToRetry());
        };
        desk.acts[u"processEvents"_s] = [](auto) { QCoreApplication::processEvents(); };
        desk.acts[u"listLines"_s] = [&](auto) {
            desk.connection.setInterpreter([&](const QString& line) {
                if (!line.isEmpty())
                    desk.journal("- ", line);
            });
        };
        desk.acts[u"identName"_s] = [&](auto name) { variables.IdentName = name; };
        desk.acts[u"ask"_s] = [&](auto) {
            desk.ident.RemotePort = 40001;
            Q_EMIT desk.ident.ConnectionRequest(7);
        };
        desk.acts[u"question"_s] = [&](auto text) { desk.ident.arrive(text); };
        desk.looks[u"attempt"_s] = [&]() -> QString {
            return desk.sock.RemoteHost + u':' + QString::number(desk.sock.RemotePort) +
                   (desk.sock.Tls ? " by TLS"_L1 : ""_L1);
        };
        desk.looks[u"sent"_s] = [&] { return std::exchange(desk.sock.sent, {}).join(u'|'); };
        desk.acts[u"identError"_s] = [&](auto why) { Q_EMIT desk.ident.ErrorEvent(1, why); };
        desk.looks[u"ident"_s] = [&] { return QString::number(desk.ident.state()); };
        desk.looks[u"yields"_s] = [&] { return QString::number(desk.events.yields); };
        QCOMPARE(desk.play(script), QString());
    }
};

QTEST_GUILESS_MAIN(TestConnection)
#include "tst_connection.moc"
