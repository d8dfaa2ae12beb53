#include "platform/EventLoop.h"
#include "support/RecordingDesk.h"
#include "support/ScriptedServer.h"
#include "wire/TcpWinsock.h"

#include <QEvent>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

using namespace Qt::StringLiterals;

// The real socket against a real peer on loopback; each test has an address of its own.
class TestWinsock final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void states();
    void bytes();
    void refused();
    void closedByPeerAfterData();
    void lastLineLeavesBeforeClose();
    void oneHandlerAtATime();
    void nothingOfAClosedConnectionIsRaised();
    void held();
    void listening();
    void staleRequest();
    void secondRequestIsRefused();
    void identOverTheWire();
    void flood();

private:
    // A socket that is connected to a server at this address.
    struct Pair
    {
        explicit Pair(const QString& address)
            : server(address)
        {
            sock.RemoteHost = address;
            sock.RemotePort = 6667;
        }
        bool connectBoth()
        {
            sock.Connect();
            return QTest::qWaitFor(
                [&] { return server.connections() > 0 && sock.state() == Winsock::Connected; });
        }

        ScriptedServer server;
        TcpWinsock sock;
    };
};

void TestWinsock::states()
{
    Pair pair(u"127.9.1.1"_s);
    QVERIFY(pair.server.isListening());
    QCOMPARE(pair.sock.state(), Winsock::Closed);
    QSignalSpy connected(&pair.sock, &Winsock::ConnectEvent);
    QSignalSpy closed(&pair.sock, &Winsock::CloseEvent);
    pair.sock.Connect();
    QVERIFY(pair.sock.state() == Winsock::ResolvingHost ||
            pair.sock.state() == Winsock::Connecting);
    QTRY_COMPARE(connected.count(), 1);
    QCOMPARE(pair.sock.state(), Winsock::Connected);
    QTRY_COMPARE(pair.server.connections(), 1);
    pair.server.closePeer();
    QTRY_COMPARE(closed.count(), 1);
    QCOMPARE(pair.sock.state(), Winsock::Closing);
    pair.sock.SendData("into the void"); // no failure
    pair.sock.Close();
    QCOMPARE(pair.sock.state(), Winsock::Closed);
    pair.sock.Close();
    QCOMPARE(pair.sock.GetData(), QByteArray());
    QCOMPARE(closed.count(), 1);
}

void TestWinsock::bytes()
{
    Pair pair(u"127.9.1.2"_s);
    QVERIFY(pair.connectBoth());
    QByteArray all;
    for (int byte = 0; byte < 256; ++byte)
        all += static_cast<char>(byte);
    QByteArray heard;
    connect(&pair.sock, &Winsock::DataArrival, this, [&] { heard += pair.sock.GetData(); });
    pair.server.say(all);
    QTRY_COMPARE(heard.size(), 256);
    pair.sock.SendData(heard);
    QTRY_COMPARE(pair.server.received(), all);
}

void TestWinsock::refused()
{
    Pair pair(u"127.9.1.3"_s);
    pair.server.stopListening();
    QSignalSpy failed(&pair.sock, &Winsock::ErrorEvent);
    QSignalSpy closed(&pair.sock, &Winsock::CloseEvent);
    QSignalSpy connected(&pair.sock, &Winsock::ConnectEvent);
    pair.sock.Connect();
    QTRY_COMPARE(failed.count(), 1);
    QCOMPARE(pair.sock.state(), Winsock::Failed);
    QVERIFY(!failed.first().at(1).toString().isEmpty());
    pair.sock.SendData("nobody hears");
    ScriptedServer other(u"127.9.1.3"_s, 8867);
    pair.sock.RemotePort = 8867;
    pair.sock.Connect(); // the next attempt starts afresh
    QTRY_COMPARE(connected.count(), 1);
    QCOMPARE(failed.count(), 1);
    QCOMPARE(closed.count(), 0);
}

void TestWinsock::closedByPeerAfterData()
{
    Pair pair(u"127.9.1.4"_s);
    QVERIFY(pair.connectBoth());
    qsizetype heard = 0;
    QStringList order;
    connect(&pair.sock, &Winsock::DataArrival, this, [&] { heard += pair.sock.GetData().size(); });
    connect(&pair.sock, &Winsock::CloseEvent, this, [&] { order << QString::number(heard); });
    pair.server.say(QByteArray(1'000'000, 'x')); // more than is read at a time
    pair.server.closePeer();
    QTRY_COMPARE(order, QStringList{u"1000000"_s});
}

void TestWinsock::lastLineLeavesBeforeClose()
{
    Pair pair(u"127.9.1.6"_s);
    QVERIFY(pair.connectBoth());
    const QByteArray much(4'000'000, 'x'); // more than the system takes at once
    pair.sock.SendData(much + "\nQUIT :bye\n");
    pair.sock.Close();
    QCOMPARE(pair.sock.state(), Winsock::Closed);
    QTRY_VERIFY(pair.server.received().endsWith("\nQUIT :bye\n"));
    QTRY_VERIFY(pair.server.peerHasGone());
}

// Every handler yields while more arrives. What it begins inside itself comes from a box.
void TestWinsock::oneHandlerAtATime()
{
    Pair pair(u"127.9.1.8"_s);
    QVERIFY(pair.connectBoth());
    QStringList order;
    const auto sayAndYield = [&](const char* text) {
        pair.server.say(text);
        for (int i = 0; i < 100; ++i) // it must not come in here
            QCoreApplication::processEvents();
    };
    const auto throughABox = [&](const QString& last) {
        const TcpWinsock::LetThrough box(pair.sock);
        QTRY_COMPARE(order.last(), last);
    };
    const QHash<QString, std::function<void()>> handlers{
        {u"a"_s,
         [&] {
             sayAndYield("b");
             throughABox(u"d."_s);
             sayAndYield("e");
             const TcpWinsock::LetThrough held(pair.sock);
             const HeldEvents hold(pair.sock);
             pair.server.closePeer();
             sayAndYield("");
         }},
        {u"b"_s,
         [&] {
             sayAndYield("c");
             throughABox(u"c."_s); // one deeper
             sayAndYield("d");
         }},
    };
    connect(&pair.sock, &Winsock::DataArrival, this, [&] {
        const QString piece = QString::fromLatin1(pair.sock.GetData());
        order << piece;
        if (const auto handler = handlers.value(piece))
            handler();
        order << piece + u'.';
    });
    connect(&pair.sock, &Winsock::CloseEvent, this, [&] { order << u"close"_s; });
    const TcpWinsock::LetThrough around(pair.sock); // outside of a handler: nothing
    pair.server.say("a");
    QTRY_COMPARE(order.join(u' '), u"a b c c. b. d d. a. e e. close"_s);
}

void TestWinsock::nothingOfAClosedConnectionIsRaised()
{
    ScriptedServer first(u"127.9.1.9"_s);
    Pair pair(u"127.9.1.10"_s);
    pair.sock.RemoteHost = u"127.9.1.9"_s;
    pair.sock.Connect();
    QTRY_VERIFY(first.connections() == 1 && pair.sock.state() == Winsock::Connected);
    QStringList events;
    connect(&pair.sock, &Winsock::ConnectEvent, this, [&] { events << u"connect"_s; });
    connect(&pair.sock, &Winsock::CloseEvent, this, [&] { events << u"close"_s; });
    connect(&pair.sock, &Winsock::ErrorEvent, this, [&] { events << u"error"_s; });
    connect(&pair.sock, &Winsock::DataArrival, this,
            [&] { events << QString::fromUtf8(pair.sock.GetData()); });
    // Data and end of the old connection are on their way when it is replaced.
    first.say("stale");
    first.closePeer();
    QTRY_VERIFY(first.peerHasGone());
    events.clear();
    pair.sock.RemoteHost = u"127.9.1.10"_s;
    pair.sock.Connect();
    QTRY_COMPARE(pair.server.connections(), 1);
    pair.server.say("fresh");
    QTRY_COMPARE(events, (QStringList{u"connect"_s, u"fresh"_s}));
    // An attempt that is given up is not heard of again.
    events.clear();
    pair.sock.RemotePort = 6668; // refused
    pair.sock.Connect();
    pair.sock.Close();
    pair.sock.RemotePort = 6667;
    pair.sock.Connect();
    QTRY_COMPARE(events, QStringList{u"connect"_s});
}

void TestWinsock::held()
{
    Pair pair(u"127.9.1.12"_s);
    QVERIFY(pair.connectBoth());
    QStringList events;
    connect(&pair.sock, &Winsock::DataArrival, this,
            [&] { events << QString::fromUtf8(pair.sock.GetData()); });
    connect(&pair.sock, &Winsock::CloseEvent, this, [&] { events << u"close"_s; });
    {
        const HeldEvents hold(pair.sock);
        pair.server.say("data");
        pair.server.closePeer();
        QTRY_VERIFY(pair.server.peerHasGone());
        QCoreApplication::processEvents();
        QCOMPARE(events, QStringList());
    }
    QTRY_COMPARE(events, (QStringList{u"data"_s, u"close"_s}));
}

void TestWinsock::listening()
{
    TcpWinsock ident;
    ident.setLocalAddress(QHostAddress(u"127.9.1.14"_s));
    ident.LocalPort = 11300;
    ident.Listen();
    QCOMPARE(ident.state(), Winsock::Listening);
    TcpWinsock second;
    second.setLocalAddress(QHostAddress(u"127.9.1.14"_s));
    second.LocalPort = 11300;
    second.Listen(); // somebody else has the port
    QCOMPARE(second.state(), Winsock::Closed);

    QByteArray heard;
    connect(&ident, &Winsock::ConnectionRequest, this, [&](qintptr request) {
        ident.Close(); // the listener; the request outlives it
        ident.Accept(request);
        ident.SendData("hello");
    });
    connect(&ident, &Winsock::DataArrival, this, [&] { heard += ident.GetData(); });
    QTcpSocket peer;
    peer.connectToHost(u"127.9.1.14"_s, 11300);
    QTRY_COMPARE(ident.state(), Winsock::Connected);
    QTRY_COMPARE(peer.bytesAvailable(), 5);
    QCOMPARE(ident.RemotePort, int(peer.localPort()));
    peer.write("question");
    QTRY_COMPARE(heard, "question");
    ident.Close();
    QTRY_COMPARE(peer.state(), QAbstractSocket::UnconnectedState);
    QTcpSocket late; // it listens no more
    late.connectToHost(u"127.9.1.14"_s, 11300);
    QTRY_COMPARE(late.error(), QAbstractSocket::ConnectionRefusedError);
}

// Lets something happen right before the queued report of a new peer is handled.
class BeforeRequest final : public QObject
{
public:
    explicit BeforeRequest(std::function<void()> action)
        : m_action(std::move(action))
    {
        QCoreApplication::instance()->installEventFilter(this);
    }

    bool eventFilter(QObject* receiver, QEvent* event) override
    {
        if (m_action && event->type() == QEvent::MetaCall && qobject_cast<QTcpServer*>(receiver))
            std::exchange(m_action, nullptr)();
        return false;
    }

    bool done() const { return !m_action; }

private:
    std::function<void()> m_action;
};

void TestWinsock::staleRequest()
{
    TcpWinsock ident;
    ident.setLocalAddress(QHostAddress(u"127.9.1.16"_s));
    ident.LocalPort = 11300;
    ident.Listen();
    QSignalSpy requests(&ident, &Winsock::ConnectionRequest);
    const BeforeRequest anew([&] {
        ident.Close();
        ident.Listen();
    });
    QTcpSocket peer;
    peer.connectToHost(u"127.9.1.16"_s, 11300);
    QTRY_VERIFY(anew.done());
    QTRY_COMPARE(peer.state(), QAbstractSocket::UnconnectedState); // it died with its listener
    QCOMPARE(requests.count(), 0);
    QCOMPARE(ident.state(), Winsock::Listening);
    QTcpSocket next;
    next.connectToHost(u"127.9.1.16"_s, 11300);
    QTRY_COMPARE(requests.count(), 1);
}

void TestWinsock::secondRequestIsRefused()
{
    TcpWinsock ident;
    ident.setLocalAddress(QHostAddress(u"127.9.1.17"_s));
    ident.LocalPort = 11300;
    ident.Listen();
    QTcpSocket first;
    QTcpSocket second;
    // Both stand before the door when it is looked at for the first time.
    first.connectToHost(u"127.9.1.17"_s, 11300);
    second.connectToHost(u"127.9.1.17"_s, 11300);
    int requests = 0;
    connect(&ident, &Winsock::ConnectionRequest, this, [&](qintptr request) {
        ++requests;
        ident.Close();
        ident.Accept(request);
        ident.SendData("one");
    });
    QTRY_COMPARE(first.bytesAvailable() + second.bytesAvailable(), 3);
    QTRY_VERIFY(first.state() == QAbstractSocket::UnconnectedState ||
                second.state() == QAbstractSocket::UnconnectedState);
    QCOMPARE(requests, 1);
}

void TestWinsock::identOverTheWire()
{
    TcpWinsock ident;
    ident.setLocalAddress(QHostAddress(u"127.9.1.18"_s));
    ident.LocalPort = 11300;
    RecordingDesk desk;
    QtEventLoop events;
    const IdentResponder responder({desk.variables, desk.mainView, events, ident}, desk.handlers);
    ident.Listen();
    QTcpSocket asker;
    asker.connectToHost(u"127.9.1.18"_s, 11300);
    asker.write("46887, 6667\r\n");
    QTRY_COMPARE(asker.state(), QAbstractSocket::UnconnectedState);
    const QByteArray answer = asker.readAll();
    QCOMPARE(answer, "11300, " + QByteArray::number(ident.RemotePort) +
                         " : USERID : UNIX : QHM\r\n46887, 6667 : USERID : UNIX : QHM");
    QCOMPARE(ident.state(), Winsock::Closed);
}

// One line a segment, faster than they are handled: nothing is lost, handled twice or overtaken.
void TestWinsock::flood()
{
    constexpr int count = 100'000;
    TcpWinsock sock;
    QtEventLoop events;
    RecordingDesk desk(&sock, &events);
    ScriptedServer server(u"127.9.1.20"_s);
    sock.RemoteHost = u"127.9.1.20"_s;
    sock.RemotePort = 6667;
    int next = 0;
    desk.connection.setInterpreter([&](const QString& line) {
        events.DoEvents();
        if (!line.isEmpty())
            next = line.toInt() == next ? next + 1 : count + 1;
    });
    sock.Connect();
    QTRY_COMPARE(server.connections(), 1);
    for (int i = 0; i < count; ++i)
        server.say(QByteArray::number(i) + '\n');
    server.closePeer();
    QSignalSpy closed(&sock, &Winsock::CloseEvent);
    QTRY_COMPARE_WITH_TIMEOUT(closed.count(), 1, 60'000);
    QCOMPARE(next, count);
}

QTEST_GUILESS_MAIN(TestWinsock)
#include "tst_winsock.moc"
