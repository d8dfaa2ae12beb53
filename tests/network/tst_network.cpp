#include "platform/Resources.h"
#include "support/TestClient.h"

#include <QNetworkProxy>
#include <QSysInfo>
#include <QTcpSocket>

using namespace Qt::StringLiterals;

namespace {

// The server asks those who come from these addresses no ident question: whoever else listens on
// this machine for all addresses cannot answer for them.
QString quietAddress()
{
    static int number = 1;
    return "127.0.1."_L1 + QString::number(++number);
}

// Somebody else in the room, who says what he is told and keeps what he hears.
class Chatter final : public QObject
{
public:
    Chatter(const QString& host, const QString& nick)
    {
        connect(&m_socket, &QTcpSocket::readyRead, this, &Chatter::read);
        m_socket.setProxy(QNetworkProxy::NoProxy);
        m_socket.bind(QHostAddress(quietAddress()));
        m_socket.connectToHost(host, 6667);
        send("NICK " + nick.toUtf8() + "\r\nUSER " + nick.toUtf8() + " 0 * :A chatter");
    }

    void send(const QByteArray& line) { m_socket.write(line + "\r\n"); }
    bool has(const QByteArray& text) const { return m_heard.contains(text); }
    void forget() { m_heard.clear(); }
    const QByteArray& heard() const { return m_heard; }

private:
    void read()
    {
        while (m_socket.canReadLine()) {
            const QByteArray line = m_socket.readLine();
            if (line.startsWith("PING "))
                send("PONG " + line.mid(5).trimmed());
            else
                m_heard += line;
        }
    }

    QTcpSocket m_socket;
    QByteArray m_heard;
};

// Lines of several chatters in a given order, one a millisecond: each is a packet of its own.
class Sayings final
{
public:
    void add(Chatter& chatter, const QByteArray& line) { m_lines.push_back({&chatter, line}); }
    void start()
    {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] {
            const auto& [chatter, line] = m_lines[m_said];
            chatter->send(line);
            if (++m_said == m_lines.size())
                m_timer.stop();
        });
        m_timer.start(1);
    }
    bool areOver() const { return m_said == m_lines.size(); }
    qsizetype count() const { return m_lines.size(); }

private:
    QTimer m_timer;
    QList<std::pair<Chatter*, QByteArray>> m_lines;
    qsizetype m_said = 0;
};

} // namespace

// Whole programs against a real server: what one does, others see.
class NetworkTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup();
    void cleanupTestCase() { m_witness.reset(); }

    void registersAndEnters();
    void talk();
    void topicChange();
    void orderOfArrival();
    void shortVisits();
    void ownerEnters();
    void pingBehindABox();
    void kick();
    void refusedRooms_data();
    void refusedRooms();
    void disconnect();

private:
    std::unique_ptr<TestClient> newClient() const;
    std::unique_ptr<TestClient> clientInRoom(const QString& nick) const;
    std::unique_ptr<Chatter> chatterInRoom(const QString& nick,
                                           const QByteArray& password = {}) const;

    QString m_host;
    std::unique_ptr<Chatter> m_witness; // in no room
};

void NetworkTest::initTestCase()
{
    m_host = qEnvironmentVariable("QH_NETWORK_HOST");
    if (m_host.isEmpty())
        QSKIP("needs a network: tests/network/with-network COMMAND");
    loadResources();
    m_witness = std::make_unique<Chatter>(m_host, u"witness"_s);
    QTRY_VERIFY(m_witness->has(" 001 "));
}

void NetworkTest::cleanup()
{
    // Whoever has left is gone for the next test, too.
    const auto roomIsEmpty = [this] {
        m_witness->forget();
        m_witness->send("NAMES #Harbor");
        return QTest::qWaitFor([this] { return m_witness->has(" 366 "); }) &&
               !m_witness->has(" 353 ");
    };
    QTRY_VERIFY2(roomIsEmpty(), m_witness->heard().constData());
}

std::unique_ptr<TestClient> NetworkTest::newClient() const
{
    auto client = std::make_unique<TestClient>(m_host, nullptr, quietAddress());
    client->start();
    return client;
}

std::unique_ptr<TestClient> NetworkTest::clientInRoom(const QString& nick) const
{
    auto client = newClient();
    client->signIn(nick);
    const bool entered = QTest::qWaitFor(
        [&] {
            return client->reads(u"Checking Your Internet Connection"_s) &&
                   client->chatters().contains(nick);
        },
        15'000);
    if (!entered)
        QTest::qFail(qPrintable(client->conversation()), __FILE__, __LINE__);
    return client;
}

std::unique_ptr<Chatter> NetworkTest::chatterInRoom(const QString& nick,
                                                    const QByteArray& password) const
{
    auto chatter = std::make_unique<Chatter>(m_host, nick);
    bool entered = QTest::qWaitFor([&] { return chatter->has(" 001 "); }, 15'000);
    if (!password.isEmpty()) {
        chatter->send("PRIVMSG NickServ :IDENTIFY " + password);
        entered = entered && QTest::qWaitFor([&] { return chatter->has(" 900 "); }, 15'000);
    }
    chatter->send("JOIN #Harbor");
    entered = entered && QTest::qWaitFor([&] { return chatter->has(" 366 "); }, 15'000);
    if (!entered)
        QTest::qFail(chatter->heard(), __FILE__, __LINE__);
    return chatter;
}

void NetworkTest::registersAndEnters()
{
    const auto master = chatterInRoom(u"harbormaster"_s, "lighthouse");
    const auto vera = chatterInRoom(u"vera"_s, "verapass");
    const auto hal = chatterInRoom(u"hal"_s, "halpass");
    const auto ann = chatterInRoom(u"ann"_s);
    QTRY_VERIFY(master->has("+v :vera"));
    QTRY_VERIFY(master->has("+h :hal"));
    const auto client = clientInRoom(u"bea"_s);
    QCOMPARE(client->state(), u"&Connect off on"_s);
    QVERIFY(client->reads(u"You have entered to the chat room"_s));
    QVERIFY(client->reads(u"Welcome To Quill Harbor Messenger!"_s));
    QVERIFY(client->topic().startsWith("Welcome to Quill Harbor"_L1));
    QCOMPARE(client->chatters(),
             (QStringList{u"+vera"_s, u"@harbormaster"_s, u"ann"_s, u"bea"_s, u"hal"_s}));
    QVERIFY(client->window().isVisible());
    QVERIFY(!client->messenger.login().isVisible());
    QVERIFY(client->chatRoom().main.room.nicks.isHalfOp(u"hal"_s));

    // What the server made of the lines that the client registered with.
    ann->send("WHOIS bea");
    QTRY_VERIFY(ann->has(" 318 "));
    QVERIFY(ann->has(QSysInfo::machineHostName().toUtf8() + "Client-User "));
    QVERIFY(ann->has(":Quill Harbor Messenger V 1.0"));
    QTRY_VERIFY(ann->has(":bea!")); // her JOIN

    // People come and go.
    const auto zoe = chatterInRoom(u"zoe"_s);
    QTRY_VERIFY(client->reads(u"zoe has joined #Harbor"_s));
    QTRY_VERIFY(client->chatters().contains(u"zoe"_s));
    zoe->send("NICK zora");
    QTRY_VERIFY(client->reads(u"zoe is now known as zora"_s));
    zoe->send("PART #Harbor");
    QTRY_VERIFY(client->reads(u"zora has left #Harbor"_s));
    ann->send("QUIT :supper");
    QTRY_VERIFY(client->reads(u"ann has Quit IRC ( Quit: supper )"_s));
    QTRY_COMPARE(client->chatters(),
                 (QStringList{u"+vera"_s, u"@harbormaster"_s, u"bea"_s, u"hal"_s}));
}

void NetworkTest::talk()
{
    const auto bea = clientInRoom(u"bea"_s);
    const auto cleo = clientInRoom(u"cleo"_s);
    const auto ann = chatterInRoom(u"ann"_s);
    bea->say(u"hello cleo"_s);
    QTRY_VERIFY(cleo->reads(u"<bea>  hello cleo"_s));
    QTRY_VERIFY(ann->has("PRIVMSG #Harbor :\x03"
                         "1 hello cleo\r\n"));
    cleo->say(u"!hello  bea"_s);
    QTRY_VERIFY(bea->reads(u"<cleo> !hello  bea"_s));
    QTRY_VERIFY(ann->has("PRIVMSG #Harbor :!hello  bea\r\n"));
    ann->send("PRIVMSG #Harbor :\x02hello\x02 \x03"
              "4both\x03 of you");
    for (const auto* client : {&bea, &cleo})
        QTRY_VERIFY((*client)->reads(u"<ann> hello both of you"_s));
    bea->say(u"IRC PRIVMSG ann :only you"_s);
    QTRY_VERIFY(ann->has("PRIVMSG ann :only you"));
    QCOMPARE(bea->conversation().count(u"hello cleo"_s), 1); // the echo; the server sends none
}

void NetworkTest::topicChange()
{
    const auto master = chatterInRoom(u"harbormaster"_s, "lighthouse");
    const auto client = clientInRoom(u"bea"_s);
    master->send("TOPIC #Harbor :Low tide");
    QTRY_COMPARE(client->topic(), u"ow tide"_s);
    QTRY_VERIFY(client->reads(u"Topic changed by harbormaster : Low tide"_s));

    QWidget* edit = client->window().findChild<QWidget*>(u"rtbTopic"_s);
    QTest::keyClicks(edit, u"no "_s);
    QCOMPARE(client->topic(), u"ow tide"_s);
    master->send("MODE #Harbor +o bea");
    QTRY_VERIFY(client->chatters().contains(u"@bea"_s));
    QTest::keyClick(edit, Qt::Key_Home);
    QTest::keyClicks(edit, u"Sl"_s);
    // A second change within one second can be refused, so it is asked for until it is done.
    QTRY_VERIFY_WITH_TIMEOUT(
        (QTest::keyClick(edit, Qt::Key_Return),
         QTest::qWaitFor([&] { return master->has("TOPIC #Harbor :Slow tide"); }, 500)),
        10'000);
    QTRY_COMPARE(client->topic(), u"low tide"_s);
    QTRY_VERIFY(client->reads(u"Topic changed by bea : Slow tide"_s));
    master->send("MODE #Harbor -o bea");
    QTRY_VERIFY(client->chatters().contains(u"bea"_s));
    QTest::keyClicks(edit, u"no"_s);
    QCOMPARE(client->topic(), u"low tide"_s);
}

void NetworkTest::orderOfArrival()
{
    const auto client = clientInRoom(u"bea"_s);
    const auto ann = chatterInRoom(u"ann"_s);
    QString expected;
    Sayings sayings;
    for (int i = 0; i < 100; ++i) {
        expected += "<ann> line "_L1 + QString::number(i) + " \r\n"_L1;
        sayings.add(*ann, "PRIVMSG #Harbor :line " + QByteArray::number(i));
    }
    sayings.start();
    QTRY_VERIFY(sayings.areOver() && client->reads(u"line 99"_s));
    const QString heard = client->conversation();
    QCOMPARE(heard.mid(heard.indexOf("<ann> line"_L1)), expected);
}

// They come, speak, change their name and go.
void NetworkTest::shortVisits()
{
    constexpr int count = 40;
    const auto client = clientInRoom(u"bea"_s);
    std::vector<std::unique_ptr<Chatter>> guests;
    for (int i = 0; i < count; ++i)
        guests.push_back(std::make_unique<Chatter>(m_host, "guest"_L1 + QString::number(i)));
    for (const auto& guest : guests)
        QTRY_VERIFY(guest->has(" 001 "));
    Sayings sayings;
    for (const auto& guest : guests) {
        const QByteArray name = "was" + QByteArray::number(sayings.count());
        for (const QByteArray& line : QByteArrayList{"JOIN #Harbor", "PRIVMSG #Harbor :hello",
                                                     "NICK " + name, "PART #Harbor"})
            sayings.add(*guest, line);
    }
    sayings.start();
    QTRY_COMPARE(client->conversation().count(u" has left #Harbor"_s), count);
    QCOMPARE(client->chatters(), QStringList{u"bea"_s});
    QCOMPARE(client->window().findChild<QLabel*>(u"cmdCount"_s)->text(),
             u" Total Chatters : [ 1 ]"_s);
}

// The services give the rank while the entry is still being handled.
void NetworkTest::ownerEnters()
{
    const auto client = newClient();
    client->signIn(u"harbormaster"_s, u"lighthouse"_s);
    QTRY_VERIFY_WITH_TIMEOUT(client->reads(u"ChanServ sets mode"_s), 15'000);
    QTRY_COMPARE(client->chatters(), QStringList{u"@harbormaster"_s});
    const QString conversation = client->conversation();
    QVERIFY2(conversation.trimmed().startsWith("You have entered to the chat room"_L1),
             qPrintable(conversation));
    QWidget* edit = client->window().findChild<QWidget*>(u"rtbTopic"_s);
    const QString before = client->topic();
    QTest::keyClicks(edit, u"x"_s);
    QVERIFY(client->topic() != before);
}

void NetworkTest::pingBehindABox()
{
    const auto client = clientInRoom(u"bea"_s);
    bool answered = false;
    client->around.dialogs.whileOpen = [&] {
        client->window().DataIn().setText({});
        client->connection().SendData(u"PING still-there"_s);
        answered = QTest::qWaitFor([&] { return client->reads(u"still-there"_s); });
    };
    client->connection().SendData(u"NICK 4#"_s); // refused, which opens a box
    QTRY_COMPARE(client->around.dialogs.shown.size(), 1);
    QVERIFY(answered);
}

void NetworkTest::kick()
{
    const auto master = chatterInRoom(u"harbormaster"_s, "lighthouse");
    const auto ann = chatterInRoom(u"ann"_s);
    const auto client = clientInRoom(u"bea"_s);
    master->send("KICK #Harbor ann :too loud");
    QTRY_VERIFY(client->reads(u"ann was kicked from #Harbor by harbormaster [ too loud ]"_s));
    QCOMPARE(client->chatters(), (QStringList{u"@harbormaster"_s, u"bea"_s}));
    master->send("KICK #Harbor bea :you, too");
    QTRY_VERIFY(client->reads(u"You were kicked from #Harbor by harbormaster [ you, too ]"_s));
    QTRY_COMPARE(client->state(), u"&Connect on off"_s);
    QVERIFY(client->looksSignedOut());
    QVERIFY(client->messenger.login().isVisible() && !client->window().isVisible());
    QCOMPARE(client->chatters(), QStringList());
    QTRY_VERIFY(master->has(":bea!")); // she is gone from the server, not only from the room
    master->forget();
    master->send("WHOIS bea");
    QTRY_VERIFY(master->has(" 401 "));

    // Signed in again, she is let in: the server's greeting shows her the way.
    client->field("Text1")->setReadOnly(false);
    client->signIn(u"bea"_s);
    QTRY_VERIFY_WITH_TIMEOUT(master->has("JOIN :#Harbor"), 15'000);
    QTRY_VERIFY(client->chatters().contains(u"bea"_s));
}

void NetworkTest::refusedRooms_data()
{
    QTest::addColumn<QByteArray>("room");
    QTest::addColumn<QString>("reason");

    QTest::newRow("full") << QByteArray("#full") << u"channel is full"_s;
    QTest::newRow("by invitation") << QByteArray("#closed") << u"invite only"_s;
    QTest::newRow("banned") << QByteArray("#banned") << u"you're banned"_s;
    QTest::newRow("with a key") << QByteArray("#keyed") << u"incorrect channel key"_s;
}

void NetworkTest::refusedRooms()
{
    QFETCH(QByteArray, room);
    QFETCH(QString, reason);
    const auto client = newClient();
    QVERIFY(client->around.writeSettings("[connect]\nautojoin=" + room + '\n'));
    client->signIn(u"bea"_s);
    QTRY_COMPARE_WITH_TIMEOUT(client->around.dialogs.shown.size(), 1, 15'000);
    const QString box = client->around.dialogs.shown.first();
    QVERIFY2(box.startsWith(QString("Error|You cannot join "_L1 + QString::fromLatin1(room))),
             qPrintable(box));
    QVERIFY2(box.contains(reason), qPrintable(box));
    QTRY_COMPARE(client->state(), u"&Connect on off"_s);
    QVERIFY(client->looksSignedOut());
    QVERIFY(client->messenger.login().isVisible() && !client->window().isVisible());
}

void NetworkTest::disconnect()
{
    const auto ann = chatterInRoom(u"ann"_s);
    const auto client = clientInRoom(u"bea"_s);
    client->click("mnu_File_Disconnect");
    QTRY_VERIFY(ann->has("QUIT :Quit: Quill Harbor Messenger v 1.0   "));
    QVERIFY(client->reads(u"You are Disconnected from Quill Harbor Server"_s));
    QCOMPARE(client->state(), u"&Connect on off"_s);
    QVERIFY(client->looksSignedOut());
    QCOMPARE(client->chatters(), QStringList());
    QVERIFY(!client->connection().isWaitingToRetry());
}

QTEST_MAIN(NetworkTest)
#include "tst_network.moc"
