#include "platform/Resources.h"
#include "session/DoConnect.h"
#include "support/Script.h"
#include "support/TestClient.h"

#include <QtNetwork>
#include <QtTest>
#include <QtWidgets>

using namespace Qt::StringLiterals;

// The whole program against a server that says what a test wants it to say.
class MessengerTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        loadResources();
        m_script.afterLook = [this](const QString& look) {
            if (look == "sent"_L1)
                forget();
        };
    }
    void init()
    {
        m_client.reset();
        // An address of its own: the last test's ports may still be taken by connections that end.
        const QString address = TestSurroundings::ownAddress(++m_number);
        m_server = std::make_unique<ScriptedServer>(address);
        QVERIFY(m_server->isListening());
        m_client = std::make_unique<TestClient>(address, &m_events);
        m_heard = 0;
    }

    void splashGoesByItself()
    {
        m_client->messenger.start();
        QVERIFY(shown<frmSplash>() && !shown<Login>());
        QTRY_VERIFY(!shown<frmSplash>() && shown<Login>());
    }

    void sessions_data()
    {
        const Scenes row;
        const QString isKnown =
            u"?sent NICK anna\nUSER PCClient-User:Quill Quill Quill Quill Harbor Messenger V 1.0\n"_s;

        row("from the sign-in to a said line",
            "start|?loaded no|?windows Login|sign in anna/secret|?state &Cancel on off|"_L1 +
                isKnown +
                "|?state &Connect off on|?locked Text1 Text2|?windows Login|"
                "hear :s 001 anna :Welcome\r\n:s 002 anna :Your host is s|"
                "?sent MODE anna +i\nJOIN #Harbor\nIDENTIFY secret\n|?windows Channel|"
                "hear :anna!u@h JOIN :#Harbor\r\n:s 332 anna #Harbor :Be kind\r\n"
                ":s 353 anna = #Harbor :anna +cleo %dave @bob|?chatters +cleo @bob anna dave|"
                "?topic e kind|?last Topic is \"Be kind\"|?sent MODE #Harbor\n|say hello all|"
                "?last <anna> hello all|?sent PRIVMSG #Harbor :\0031 hello all\n|"
                "hear :bob!u@h PRIVMSG #Harbor :hello anna|?last <bob> hello anna|?boxes "_L1);
        row("the settings are read once",
            u"settings [connect]\nfullname=Anna A\nautojoin=<none>\n[irc]\nquitmsg=bye\n|"
            "start|sign in anna|?sent NICK anna\nUSER PCClient-User:Anna A\n|"
            "hear :s 001 anna :Welcome\r\nPING :x|?sent MODE anna +i\nPONG :x\n|"
            "settings [connect]\nfullname=Other\n|sign out|?sent QUIT :bye\n|sign in bea|"
            "?sent NICK bea\nUSER PCClient-User:Anna A\n"_s);
        // From a field like a button it is passed over, from the other one it ends the program. The
        // next touch tries again, on the usual port.
        const QString bad = u"settings [connect]\nport=many\n|start|sign by "_s;
        const QString good =
            u"|?loaded no|?looks out|?notices 1|settings [connect]\nport=7000\n|"_s;
        row("a bad setting", bad + "Text1|?ends 0|?boxes "_L1 + good + "sign by Text1|"_L1 +
                                 "?state &Connect off on"_L1);
        row("a bad setting is fatal",
            bad +
                "Text2|?ends 1|?boxes Quill Harbor Messenger: Run-time error '13':\n\nType mismatch"_L1 +
                good + "sign by Text2|?state &Connect off on"_L1);

        // Nothing of an attempt that was given up comes to life later.
        row("cancelled", "start|sign in anna|?state &Cancel on off|button|?state &Connect on off|"
                         "?looks out|?locked |entry mnu_File_Connect|?state &Connect off on|"_L1 +
                             isKnown);
        // Talk that nobody carries is still echoed; the next session works.
        const QString ended = u"|?sent QUIT :Quill Harbor Messenger v 1.0\n|?peer gone|"
                              "?state &Connect on off|?chatters |?looks out|?locked |say hello?|"
                              "?last <anna> hello?|sign in anna|"_s +
                              isKnown;
        row("disconnected by the menu", "room|entry mnu_File_Disconnect"_L1 + ended);
        row("disconnected by signing out", "room|sign out"_L1 + ended);
        row("disconnected by moving to another server",
            "room|refuse|move|?state &Connect off on|?boxes QuillHarborMessenger: Would you really "
            "like to connect to the server 'irc.example'? You will be disconnect from your current "
            "one|agree|move"_L1 +
                ended);
        // Only the user's own ways out unlock the fields, and an ended session is not taken up
        // again.
        const QString over = u"|?peer gone|?state &Connect on off|?chatters |?looks out|"
                             "?locked Text1 Text2|?input Not connected: nobody hears what you type "
                             "here|?waits no|?sent "_s;
        row("shut down by the server", "room|hear ERROR :Server shutting down|drop"_L1 + over +
                                           "|?windows Channel|?told SERVER closed the connection: "
                                           "Server shutting down. Sign in "
                                           "to come back."_L1);
        row("kicked", "room|hear :bob!u@h KICK #Harbor anna :too loud"_L1 + over +
                          "|?windows Login|?told You were kicked by bob: too loud. Sign in to come "
                          "back."_L1);

        row("a refused room",
            "start|sign in anna|"_L1 + isKnown +
                "|hear :s 001 anna :Welcome\r\n:s 002 anna :Your host is s|"
                "?sent MODE anna +i\nJOIN #Harbor\n|hear :s 471 anna #Harbor :Cannot join channel|"
                "?boxes Error: You cannot join #Harbor : Cannot join channel|?state &Connect on "
                "off|"
                "?sent QUIT :Quill Harbor Messenger v 1.0\n|?windows Login|?looks out|?locked "_L1);

        row("closed windows", u"room|close room|?windows Login|tray away|close sign-in|"
                              "?windows Login minimized|tray there|close sign-in|?windows |"
                              "hear PING :x|?sent PONG :x\n|?state &Connect off on"_s);
        for (const char* way : {"entry mnu_Terminate", "entry mnu_systray_exit", "desktop ends"})
            row(way,
                "room|entry mnu_About|entry mnu_author|entry mnu_register_nickname|"
                "entry mnu_File_changenick|hear :s 431 anna :x|smileys|"
                "?small About Author frmSmileys frmchange frmregister usenick|"_L1 +
                    QLatin1StringView(way) +
                    "|?small |?ends 1|?sent QUIT :Quill Harbor Messenger v 1.0\n|?peer gone"_L1);
        row("the sign-in form's end, at once and without a word",
            u"room|signin mnu_Close|?ends 1|?peer there|?sent "_s);
        // A desktop that draws the menu itself asks for it when it sees the icon.
        row("end before the first sign-in", u"start|tray mnu_systray_exit|?ends 1|?loaded no"_s);

        row("a rank opens the topic",
            u"room|topic x|?topic topic|hear :bob!u@h MODE #Harbor +o :anna|?chatters @anna @bob|"
            "topic not a|?sent TOPIC #Harbor :not a topic \n|hear :anna!u@h TOPIC #Harbor :another|"
            "hear :bob!u@h MODE #Harbor -o :anna|?topic nother|?chatters @bob anna|topic x|"
            "?topic nother"_s);
        row("the tool bar is pale without an engine",
            u"room|?tools there|page home|?tools pale|?engines 1"_s);
        row("a private line is told while nobody looks",
            u"settings [notify]\nmention=true\n|room|hear :kim!u@h PRIVMSG anna :psst|"
            "?notified kim: psst"_s);
    }
    void sessions()
    {
        QFETCH(QString, script);
        m_script.play(script);
    }

    void fallbackPortAndRetry()
    {
        const QString address = m_client->around.address;
        m_server.reset();
        m_client->start();
        m_client->chatRoom(); // loaded, so that its timer can be hurried
        m_client->signIn(u"anna"_s);
        QTRY_VERIFY(m_client->connection().isWaitingToRetry());
        QVERIFY(m_client->told().contains("Next try in "_L1));
        m_client->signIn({}); // refused, but the wait is over all the same
        QVERIFY(!m_client->connection().isWaitingToRetry());

        m_client->connection().setRetryInterval(100);
        m_client->signIn(u"anna"_s);
        QTRY_VERIFY(m_client->conversation().count(u"port 8867"_s) >= 2);
        QCOMPARE(m_client->conversation().count(u"port 6667"_s), 1);
        m_server = std::make_unique<ScriptedServer>(address, 8867);
        QTRY_VERIFY(m_server->received().startsWith("NICK anna\n"));
    }

    void anotherNetworkIsChosen()
    {
        m_server.reset(); // nobody is there
        const QString other = TestSurroundings::ownAddress(++m_number);
        ScriptedServer server(other);
        TestClient client(QString(), &m_events, m_client->around.address);
        QVERIFY(client.around.writeSettings(
            "[connect]\nserver="_ba + m_client->around.address.toLatin1() + "\nreconnect=false\n"));
        auto* link = client.messenger.login().findChild<QToolButton*>(u"lnkNetwork"_s);
        client.signIn(u"anna"_s);
        QTRY_COMPARE(link->text(),
                     QString("Network: "_L1 + m_client->around.address + " does not answer"_L1));
        QVERIFY(!client.connection().isWaitingToRetry()); // as the settings say

        link->click();
        const auto* form = shown<NetworkForm>();
        form->findChild<QComboBox*>()->setEditText(other);
        form->findChild<QLineEdit*>(u"txtRoom"_s)->setText(u"#quay"_s);
        form->findChild<QAbstractButton*>(u"cmdOK"_s)->click();
        QCOMPARE(link->text(), QString("Network: "_L1 + other));
        client.signIn(u"anna"_s);
        QTRY_VERIFY(server.received().contains("USER "));
        QVERIFY(!link->isEnabled());
        server.say(":s 001 anna :Welcome\r\n:s 002 anna :Your host is s\r\n");
        QTRY_VERIFY(server.received().contains("JOIN #quay"));
    }

    // Who the user is, the server may ask at a port of the program's own.
    void answersIdent()
    {
        beInTheRoom();
        QTcpSocket server;
        server.connectToHost(m_client->around.address, m_client->around.identPort);
        QByteArray answer;
        QTRY_VERIFY((answer += server.readAll()).contains(" : USERID : UNIX : "));
    }

    // Room and chatters in files of their own, without codes, whatever their names are made of; a
    // folder that is none is told once.
    void keepsWhatIsSaid()
    {
        const QTemporaryDir folder;
        const QString log = folder.filePath(u"talk"_s);
        QVERIFY(m_client->around.writeSettings("[log]\nfolder=" + log.toUtf8() + '\n'));
        beInTheRoom();
        m_server->say(":bob!u@h PRIVMSG #Harbor :\x02hi\x02 \x03"
                      "4all\x07 :)\r\n"
                      ":..!u@h PRIVMSG anna :\xc3\xa9\r\n:" +
                      QByteArray("\xc3\xa9").repeated(60) + "!u@h PRIVMSG anna :x\r\n");
        const auto file = [&](const QString& name) {
            QFile kept(log + u'/' + name + ".2003-04-05.txt"_L1);
            kept.open(QIODevice::ReadOnly);
            return QString::fromUtf8(kept.readAll());
        };
        QTRY_VERIFY(file(u"#harbor"_s).contains("[06:07:08] <bob> hi all  :)\n"_L1));
        QTRY_VERIFY(file(u"%2E%2E"_s).endsWith(u"[06:07:08] <..> \u00e9\n"_s));
        QTRY_COMPARE(QDir(log).entryList({u"*%C3%A9+*.txt"_s}).size(), 1); // no endless name
        QVERIFY(QFile::permissions(log + "/#harbor.2003-04-05.txt"_L1) ==
                (QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser));

        QVERIFY(QDir(log).removeRecursively());
        QFile wall(log);
        QVERIFY(wall.open(QIODevice::WriteOnly));
        m_client->say(u"one"_s);
        QTRY_COMPARE(m_client->around.told.size(), 1);
        m_client->say(u"two"_s);
        m_client->chatRoom().finishLog();
        QCoreApplication::processEvents();
        QCOMPARE(m_client->around.told.size(), 1);
        QVERIFY(m_client->reads(u"two"_s));
    }

    void tellsOfMentions()
    {
        QVERIFY(m_client->around.writeSettings("[notify]\nmention=true\n"));
        beInTheRoom();
        auto& view = static_cast<ChatView&>(m_client->window().DataIn());
        const auto marked = [&view] {
            QStringList lines;
            for (const qsizetype line : view.notes().marked())
                lines += view.chatText().lineText(line).trimmed();
            return lines;
        };
        const QStringList& notices = m_client->around.tray.notices;
        QVERIFY(QTest::qWaitForWindowActive(&m_client->window()));
        m_server->say(":bob!u@h PRIVMSG #Harbor :Hey \00304ANNA!\r\n"
                      ":bob!u@h PRIVMSG #Harbor :annabel is not her\r\n"
                      ":bob!u@h PRIVMSG #Harbor :\001ACTION waves at anna\001\r\n");
        QTRY_COMPARE(marked(), QStringList({u"<bob> Hey ANNA!"_s, u"bob waves at anna"_s}));
        QCOMPARE(notices, QStringList()); // she has seen it
        m_client->say(u"anna said it"_s);
        m_server->say(":anna!u@h NICK :eve\r\n");
        QTRY_VERIFY(m_client->chatters().contains(u"eve"_s));

        m_client->window().Hide();
        ListBox& ignored = m_client->chatRoom().windows.ignoreList->List1();
        ignored.AddItem(u"bob - Blocked"_s);
        m_server->say(":bob!u@h PRIVMSG #Harbor :eve, look\r\n"
                      ":kim!u@h PRIVMSG #Harbor :<b>eve</b> & \002you\002\r\n"
                      ":kim!u@h PRIVMSG #Harbor :eve? eve?\r\n");
        QTRY_COMPARE(marked().size(), 5);
        QCOMPARE(notices, QStringList(u"kim|<b>eve</b> & you"_s)); // nobody blocked, and no flood
    }

    void survivesNoise()
    {
        // Bytes as they may come from anywhere.
        beInTheRoom();
        QRandomGenerator random(20030405);
        QByteArray noise;
        while (noise.size() < 1'000'000) {
            const int length = random.bounded(100) == 0 ? 20'000 : random.bounded(200);
            for (int i = 0; i < length; ++i)
                noise += static_cast<char>(random.bounded(256));
            noise += random.bounded(2) ? "\r\n" : "\n";
        }
        // A line that ends the session would end the test: a random one does not, the seed is
        // fixed.
        m_server->say(noise);
        forget();
        m_server->say("\r\nPING :one two\r\n");
        QTRY_VERIFY_WITH_TIMEOUT(heard().contains("PONG :one two\n"), 60'000);
        m_server->say(":cleo!u@h PRIVMSG #Harbor :still here?\r\n");
        QTRY_VERIFY(m_client->reads(u"still here?"_s));
    }

private:
    void beInTheRoom()
    {
        m_client->beInTheRoom(*m_server);
        forget();
    }
    QByteArray heard() const { return m_server->received().mid(m_heard); }
    void forget() { m_heard = m_server->received().size(); }
    static QAction* entryOf(QWidget& owner, const QString& name)
    {
        return owner.findChild<QAction*>(name);
    }

    int m_number = 0;
    HastyEventLoop m_events;
    std::unique_ptr<ScriptedServer> m_server;
    std::unique_ptr<TestClient> m_client;
    qsizetype m_heard = 0;

    Script m_script{
        {
            {u"settings"_s,
             [this](const QString& text) {
                 QVERIFY(m_client->around.writeSettings(text.toUtf8()));
             }},
            {u"start"_s, [this](auto) { m_client->start(); }},
            {u"room"_s, [this](auto) { beInTheRoom(); }},
            {u"sign"_s,
             [this](const QString& how) {
                 if (how == "out"_L1) {
                     m_client->signEntry().trigger();
                 } else if (how.startsWith("in "_L1)) {
                     m_client->signIn(how.mid(3).section(u'/', 0, 0), how.section(u'/', 1));
                 } else {
                     m_client->enter(u"anna"_s);
                     m_client->pressReturnIn(how.mid(3).toLatin1());
                 }
             }},
            {u"button"_s, [this](auto) { m_client->messenger.login().cmdSignIn_Click(); }},
            {u"entry"_s, [this](const QString& name) { m_client->click(name.toLatin1()); }},
            {u"signin"_s,
             [this](const QString& name) {
                 entryOf(m_client->messenger.login(), name)->trigger();
             }},
            {u"tray"_s,
             [this](const QString& what) {
                 if (QAction* entry = entryOf(*m_client->around.tray.menu, what))
                     entry->trigger();
                 else
                     m_client->around.tray.available = what == "there"_L1;
             }},
            {u"hear"_s, [this](const QString& lines) { m_server->say(lines.toUtf8() + "\r\n"); }},
            {u"drop"_s, [this](auto) { m_server->closePeer(); }},
            {u"say"_s, [this](const QString& text) { m_client->say(text); }},
            {u"refuse"_s, [this](auto) { m_client->around.dialogs.answerYes = false; }},
            {u"agree"_s, [this](auto) { m_client->around.dialogs.answerYes = true; }},
            {u"move"_s,
             [this](auto) {
                 Session& session = m_client->chatRoom().session;
                 DoConnect(u"irc.example"_s, m_client->around.dialogs, session.connection,
                           session.commands);
             }},
            {u"close"_s,
             [this](const QString& which) {
                 QWidget& signIn = m_client->messenger.login();
                 (which == "room"_L1 ? m_client->window() : signIn).close();
             }},
            {u"desktop"_s,
             [](auto) {
                 QEvent quit(QEvent::Quit); // windows that ignore their close event can veto it
                 QCoreApplication::sendEvent(QCoreApplication::instance(), &quit);
             }},
            {u"topic"_s,
             [this](const QString& text) {
                 auto* edit = m_client->window().findChild<QWidget*>(u"rtbTopic"_s);
                 QTest::keyClick(edit, Qt::Key_Home);
                 QTest::keyClicks(edit, text);
                 QTest::keyClick(edit, Qt::Key_Return);
             }},
            {u"smileys"_s, [this](auto) { m_client->chatRoom().windows.palettes.showSmileys(); }},
            {u"page"_s, [this](auto) { m_client->window().myHome(); }},
        },
        {
            {u"sent"_s,
             [this] {
                 return QString::fromUtf8(heard())
                     .remove(QChar(u'\0'))
                     .replace("USER "_L1 + QSysInfo::machineHostName(), "USER PC"_L1);
             }},
            {u"peer"_s, [this] { return m_server->peerHasGone() ? u"gone"_s : u"there"_s; }},
            {u"state"_s, [this] { return m_client->state(); }},
            {u"told"_s, [this] { return m_client->told(); }},
            {u"input"_s, [this] { return m_client->inputSays(); }},
            {u"looks"_s, [this] { return m_client->looksSignedOut() ? u"out"_s : u"in"_s; }},
            {u"locked"_s,
             [this] {
                 QStringList locked;
                 for (const char* name : {"Text1", "Text2"})
                     locked += m_client->field(name)->isReadOnly() ? QString::fromLatin1(name)
                                                                   : QString();
                 return locked.join(u' ').trimmed();
             }},
            {u"waits"_s,
             [this] { return m_client->connection().isWaitingToRetry() ? u"yes"_s : u"no"_s; }},
            {u"chatters"_s, [this] { return m_client->chatters().join(u' '); }},
            {u"topic"_s, [this] { return m_client->topic(); }},
            {u"last"_s, [this] { return m_client->conversation().trimmed().section(u'\n', -1); }},
            {u"windows"_s,
             [this] {
                 QString names = shown<Login>() ? u"Login"_s : QString();
                 names += shown<Login>() && shown<Login>()->isMinimized() ? " minimized"_L1 : ""_L1;
                 return QString(names + (shown<Channel>() ? "Channel"_L1 : ""_L1));
             }},
            {u"small"_s,
             [] {
                 QStringList names;
                 for (const QWidget* window : QApplication::topLevelWidgets()) {
                     if (qobject_cast<const Form*>(window) && window->isVisible())
                         names += QLatin1StringView(window->metaObject()->className());
                 }
                 names.removeAll(u"Login"_s);
                 names.removeAll(u"Channel"_s);
                 names.sort();
                 return names.join(u' ');
             }},
            {u"loaded"_s,
             [this] { return m_client->messenger.hasChatRoom() ? u"yes"_s : u"no"_s; }},
            {u"boxes"_s,
             [this] { return m_client->around.dialogs.shown.join(u' ').replace(u'|', ": "_L1); }},
            {u"notices"_s, [this] { return QString::number(m_client->around.told.size()); }},
            {u"notified"_s,
             [this] { return m_client->around.tray.notices.join(u' ').replace(u'|', ": "_L1); }},
            {u"ends"_s, [this] { return QString::number(m_client->around.ends); }},
            {u"engines"_s, [this] { return QString::number(m_client->around.enginesAsked); }},
            {u"tools"_s,
             [this] {
                 return m_client->window().findChild<QWidget*>(u"ToolBar1"_s)->isEnabled()
                            ? u"there"_s
                            : u"pale"_s;
             }},
        }};
};

QTEST_MAIN(MessengerTest)
#include "tst_messenger.moc"
