#include "platform/EventLoop.h"
#include "support/RecordingDesk.h"
#include "support/ScriptedServer.h"
#include "wire/TcpWinsock.h"

using namespace Qt::StringLiterals;

namespace {

// A socket and the server that it is meant for; what the socket raises, in order.
struct Pair
{
    explicit Pair(const QString& address)
        : server(address)
    {
        sock.RemoteHost = address;
        sock.RemotePort = 6667;
        QObject::connect(&sock, &Winsock::ConnectEvent, [this] { events << u"connect"_s; });
        QObject::connect(&sock, &Winsock::CloseEvent, [this] { events << u"close"_s; });
        QObject::connect(&sock, &Winsock::ErrorEvent, [this](int, const QString& why) {
            events << (why.isEmpty() ? u"error without a word"_s : u"error"_s);
        });
        QObject::connect(&sock, &Winsock::DataArrival, [this] {
            heard += sock.GetData();
            if (heard.size() < 10)
                events << QString::fromUtf8(std::exchange(heard, {}));
        });
    }
    bool connectBoth()
    {
        sock.Connect();
        const bool done = QTest::qWaitFor(
            [&] { return server.connections() > 0 && sock.state() == Winsock::Connected; });
        events.clear();
        return done;
    }

    QStringList events;
    QByteArray heard; // what is longer than a word
    ScriptedServer server;
    TcpWinsock sock;
};

} // namespace

// The real socket against a real peer on loopback; each test has an address of its own.
class TestWinsock final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void states()
    {
        Pair pair(u"127.9.1.1"_s);
        QCOMPARE(pair.sock.state(), Winsock::Closed);
        pair.sock.Connect();
        QVERIFY(pair.sock.state() == Winsock::ResolvingHost ||
                pair.sock.state() == Winsock::Connecting);
        QTRY_COMPARE(pair.events, QStringList{u"connect"_s});
        QCOMPARE(pair.sock.state(), Winsock::Connected);
        QTRY_COMPARE(pair.server.connections(), 1);
        pair.server.closePeer();
        QTRY_COMPARE(pair.events.last(), u"close"_s);
        QCOMPARE(pair.sock.state(), Winsock::Closing);
        pair.sock.SendData("into the void"); // no failure
        pair.sock.Close();
        QCOMPARE(pair.sock.state(), Winsock::Closed);
        pair.sock.Close();
        QCOMPARE(pair.sock.GetData(), QByteArray());
        QCOMPARE(pair.events.size(), 2);
        pair.sock.Connect(); // nothing of the old end is left
        QTRY_COMPARE(pair.server.connections(), 2);
        pair.server.say("again");
        QTRY_COMPARE(pair.events.mid(2), QStringList({u"connect"_s, u"again"_s}));
    }

    void refused()
    {
        Pair pair(u"127.9.1.3"_s);
        pair.server.stopListening();
        pair.sock.Connect();
        QTRY_COMPARE(pair.events, QStringList{u"error"_s});
        QCOMPARE(pair.sock.state(), Winsock::Failed);
        pair.sock.SendData("nobody hears");
        const ScriptedServer other(u"127.9.1.3"_s, 8867);
        pair.sock.RemotePort = 8867;
        pair.sock.Connect(); // the next attempt starts afresh
        QTRY_COMPARE(pair.events, (QStringList{u"error"_s, u"connect"_s}));
    }

    void everyByteArrives()
    {
        QByteArray all;
        for (int i = 0; i < 4'000'000; ++i) // more than is read, or the system takes, at once
            all += static_cast<char>(i % 256);
        Pair pair(u"127.9.1.4"_s);
        QVERIFY(pair.connectBoth());
        pair.server.say(all);
        pair.server.closePeer();
        QTRY_COMPARE(pair.events, QStringList{u"close"_s});
        QVERIFY(pair.heard == all);

        Pair sender(u"127.9.1.6"_s);
        QVERIFY(sender.connectBoth());
        sender.sock.SendData(all + "QUIT :bye\n");
        sender.sock.Close();
        QCOMPARE(sender.sock.state(), Winsock::Closed);
        QTRY_VERIFY(sender.server.peerHasGone());
        QVERIFY(sender.server.received() == all + "QUIT :bye\n");
    }

    // Every handler yields while more arrives. What it begins inside itself comes from a box.
    void oneHandlerAtATime()
    {
        Pair pair(u"127.9.1.8"_s);
        QVERIFY(pair.connectBoth());
        pair.sock.disconnect();
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

    void nothingOfAClosedConnectionIsRaised()
    {
        ScriptedServer first(u"127.9.1.9"_s);
        Pair pair(u"127.9.1.10"_s);
        pair.sock.RemoteHost = u"127.9.1.9"_s;
        pair.sock.Connect();
        QTRY_VERIFY(first.connections() == 1 && pair.sock.state() == Winsock::Connected);
        // Data and end of the old connection are on their way when it is replaced.
        first.say("stale");
        first.closePeer();
        QTRY_VERIFY(first.peerHasGone());
        pair.events.clear();
        pair.sock.RemoteHost = u"127.9.1.10"_s;
        pair.sock.Connect();
        QTRY_COMPARE(pair.server.connections(), 1);
        pair.server.say("fresh");
        QTRY_COMPARE(pair.events, (QStringList{u"connect"_s, u"fresh"_s}));
        // An attempt that is given up is not heard of again.
        pair.events.clear();
        pair.sock.RemotePort = 6668; // refused
        pair.sock.Connect();
        pair.sock.Close();
        pair.sock.RemotePort = 6667;
        pair.sock.Connect();
        QTRY_COMPARE(pair.events, QStringList{u"connect"_s});
    }

    void listening()
    {
        const QString address = u"127.9.1.14"_s;
        TcpWinsock ident;
        TcpWinsock late; // somebody else has the port
        for (TcpWinsock* sock : {&ident, &late}) {
            sock->setLocalAddress(QHostAddress(address));
            sock->LocalPort = 11300;
            sock->Listen();
        }
        QCOMPARE(ident.state(), Winsock::Listening);
        QCOMPARE(late.state(), Winsock::Closed);
        QByteArray heard;
        int requests = 0;
        connect(&ident, &Winsock::ConnectionRequest, this, [&](qintptr request) {
            ++requests;
            ident.Close(); // the listener; the request outlives it
            ident.Accept(request);
            ident.SendData("hello");
        });
        connect(&ident, &Winsock::DataArrival, this, [&] { heard += ident.GetData(); });
        // Both stand before the door when it is looked at for the first time.
        QTcpSocket peers[2];
        for (QTcpSocket& peer : peers)
            peer.connectToHost(address, 11300);
        QTRY_COMPARE(peers[0].bytesAvailable() + peers[1].bytesAvailable(), 5);
        QTcpSocket& peer = peers[peers[0].bytesAvailable() ? 0 : 1];
        QTcpSocket& other = peers[&peer == peers ? 1 : 0];
        QTRY_COMPARE(other.state(), QAbstractSocket::UnconnectedState);
        QCOMPARE(requests, 1);
        QCOMPARE(ident.state(), Winsock::Connected);
        QCOMPARE(ident.RemotePort, int(peer.localPort()));
        peer.write("question");
        QTRY_COMPARE(heard, "question");
        ident.Close();
        QTRY_COMPARE(peer.state(), QAbstractSocket::UnconnectedState);
        other.connectToHost(address, 11300); // it listens no more
        QTRY_COMPARE(other.error(), QAbstractSocket::ConnectionRefusedError);
    }

    // One line a segment, faster than they are handled: nothing is lost, handled twice or
    // overtaken.
    void flood()
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
};

QTEST_GUILESS_MAIN(TestWinsock)
#include "tst_winsock.moc"
