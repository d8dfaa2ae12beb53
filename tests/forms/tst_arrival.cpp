#include "platform/Resources.h"
#include "support/TestClient.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

// In each yield the next piece arrives.
class FeedingEventLoop final : public EventLoop
{
public:
    void DoEvents() override
    {
        if (!pieces.isEmpty())
            server->say(pieces.takeFirst());
        for (int i = 0; i < 10; ++i) // from the server's hand to where it would be handled
            QCoreApplication::processEvents();
    }
    void Pause(double seconds) override
    {
        paused += seconds;
        if (inPause)
            std::exchange(inPause, {})();
        DoEvents();
    }

    ScriptedServer* server = nullptr;
    QList<QByteArray> pieces;
    std::function<void()> inPause; // what the user does in the next one
    double paused = 0;             // seconds
};

QByteArray lines(const QList<QByteArray>& lines)
{
    return lines.join("\r\n") + "\r\n";
}

using Outcome = std::function<QString(TestClient&)>;

} // namespace

// What the server says while the program is still busy with what it said before.
class ArrivalTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { loadResources(); }

    void init()
    {
        m_client.reset();
        const QString address = TestSurroundings::ownAddress(++m_number);
        m_server = std::make_unique<ScriptedServer>(address);
        QVERIFY(m_server->isListening());
        m_events.server = m_server.get();
        m_events.pieces.clear();
        m_client = std::make_unique<TestClient>(address, &m_events);
    }

    void orderOfArrival_data()
    {
        QTest::addColumn<bool>("inTheRoom");
        QTest::addColumn<QList<QByteArray>>("pieces");
        QTest::addColumn<Outcome>("outcome");
        QTest::addColumn<QString>("expected");

        QList<QByteArray> talk;
        QString heard;
        for (int i = 0; i < 100; ++i) {
            talk += lines({":bob!u@h PRIVMSG #Harbor :line " + QByteArray::number(i) + '.'});
            heard += QString::number(i) + u'.';
        }
        QTest::newRow("talk") << true << talk << Outcome([](TestClient& client) -> QString {
            static const QRegularExpression number(u"line (\\d+\\.)"_s);
            QString numbers;
            for (const auto& match : number.globalMatch(client.conversation()))
                numbers += match.captured(1);
            return numbers;
        }) << heard;

        QList<QByteArray> visits;
        for (int i = 0; i < 40; ++i) {
            const QByteArray nick = "guest" + QByteArray::number(i);
            const QByteArray from = ':' + nick + "!u@h ";
            visits += lines({from + "JOIN :#Harbor"});
            visits += lines({from + "PRIVMSG #Harbor :hello"});
            visits += lines({from + "NICK :was" + nick});
            visits += lines({":was" + nick + "!u@h PART #Harbor"});
        }
        QTest::newRow("short visits")
            << true << visits << Outcome([](TestClient& client) -> QString {
                   return client.chatters().join(u' ') +
                          client.window().findChild<QLabel*>(u"cmdCount"_s)->text();
               })
            << u"@bob anna Total Chatters : [ 2 ]"_s;

        const QByteArray entry = lines({":anna!u@h JOIN :#Harbor", ":s 332 anna #Harbor :a topic",
                                        ":s 353 anna = #Harbor :anna @bob"});
        QTest::newRow("an owner's entry")
            << false
            << QList<QByteArray>{lines({":s 001 anna :Welcome"}) + entry,
                                 lines({":ChanServ!s@s MODE #Harbor +o :anna"})}
            << Outcome([](TestClient& client) -> QString {
                   QWidget* edit = client.window().findChild<QWidget*>(u"rtbTopic"_s);
                   QTest::keyClicks(edit, u"not a"_s);
                   return client.chatters().join(u' ') + u' ' + client.topic();
               })
            << u"@anna @bob not a topic"_s;
        QTest::newRow("a refused entry")
            << false
            << QList<QByteArray>{lines({":s 001 anna :Welcome", ":s 002 anna :Your host is s"}),
                                 lines({":s 003 anna :This server is new"}),
                                 lines({":s 471 anna #Harbor :It is full"})}
            << Outcome([](TestClient& client) -> QString {
                   return QString((client.messenger.login().isVisible() ? "sign-in"_L1 : ""_L1) +
                                  (client.window().isVisible() ? "room"_L1 : ""_L1));
               })
            << u"sign-in"_s;
        QTest::newRow("what stood before the greeting")
            << false
            << QList<QByteArray>{lines({":s 001 anna :Welcome"}),
                                 entry.left(entry.indexOf(":s 353")),
                                 lines({":s 251 anna :noise", ":bob!u@h PRIVMSG #Harbor :hello"})}
            << Outcome([](TestClient& client) -> QString {
                   return client.conversation().section(u"\r\n"_s, 0, 0, QString::SectionSkipEmpty);
               })
            << u"You have entered to the chat room "_s;
    }

    void orderOfArrival()
    {
        QFETCH(bool, inTheRoom);
        QFETCH(QList<QByteArray>, pieces);
        QFETCH(Outcome, outcome);
        QFETCH(QString, expected);
        if (inTheRoom) {
            m_client->beInTheRoom(*m_server);
        } else {
            m_client->start();
            m_client->signIn(u"anna"_s);
            QTRY_VERIFY(m_server->received().contains("USER "));
        }
        sayWithYields(pieces);
        QCOMPARE(outcome(*m_client), expected);
    }

    // The server is answered, but a flood of what opened the box does not open more of them.
    void behindABox()
    {
        m_client->beInTheRoom(*m_server);
        const QByteArray refused = ":s 432 anna x :Erroneous";
        bool answered = false;
        m_client->around.dialogs.whileOpen = [&] {
            m_server->say(lines({refused, refused, "PING :are you there"}));
            answered = QTest::qWaitFor(
                [&] { return m_server->received().contains("PONG :are you there\n"); });
        };
        m_server->say(lines({refused, ":bob!u@h PRIVMSG #Harbor :hello"}));
        QTRY_VERIFY(m_client->reads(u"hello"_s));
        QCOMPARE(m_client->around.dialogs.shown.size(), 1);
        QVERIFY(answered);
    }

    // While the own kick is being handled the user signs in again. What came behind it meant the
    // session that is over.
    void restOfAnOlderConnection()
    {
        m_client->beInTheRoom(*m_server);
        m_events.inPause = [this] {
            m_client->field("Text1")->setReadOnly(false);
            m_client->signIn(u"anna"_s);
        };
        m_server->say(lines({":bob!u@h KICK #Harbor anna :out", ":s 332 anna #Harbor :an old topic",
                             ":bob!u@h KICK #Harbor anna :and stay out"}));
        QTRY_COMPARE(m_server->connections(), 2);
        m_server->say("PING :new session\r\n");
        QTRY_VERIFY(m_server->received().contains("PONG :new session\n"));
        QVERIFY(!m_client->reads(u"an old topic"_s) && !m_client->reads(u"and stay out"_s));
    }

    // Each topic of a room makes its line wait. A server that sends them by the thousand does not
    // keep its own PING waiting for minutes.
    void floodOfPauses()
    {
        m_client->beInTheRoom(*m_server);
        m_events.paused = 0;
        const QByteArray flood = lines(QList<QByteArray>(50, ":s 332 anna #Harbor :news"));
        sayWithYields(QList<QByteArray>(40, flood) + QList<QByteArray>{"PING :still there\r\n"});
        QTRY_VERIFY(m_server->received().contains("PONG :still there"));
        QVERIFY2(m_events.paused > 0.1 && m_events.paused < 2,
                 qPrintable(QString::number(m_events.paused)));
    }

private:
    // The first piece at once, each further one in a yield of those before.
    void sayWithYields(QList<QByteArray> pieces)
    {
        const QByteArray first = pieces.takeFirst();
        m_events.pieces = std::move(pieces);
        m_server->say(first);
        QTRY_VERIFY(m_events.pieces.isEmpty());
        m_server->say("PING :last one\r\n");
        QTRY_VERIFY(m_server->received().endsWith("PONG :last one\n") || m_server->peerHasGone());
    }

    int m_number = 0;
    FeedingEventLoop m_events;
    std::unique_ptr<ScriptedServer> m_server;
    std::unique_ptr<TestClient> m_client;
};

QTEST_MAIN(ArrivalTest)
#include "tst_arrival.moc"
