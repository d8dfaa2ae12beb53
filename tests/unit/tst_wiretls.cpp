#include "support/ScriptedServer.h"
#include "support/TestAuthority.h"
#include "wire/TcpWinsock.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

// A private line to a server in this process, whose certificate is made here.
class TestWireTls final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        if (!m_authority.isMade())
            QSKIP("there is no openssl to make certificates with");
    }

    void good()
    {
        const QString address = u"127.9.2.1"_s;
        ScriptedServer server(address, port, m_authority.issue("IP:127.9.2.1,DNS:irc.example"));
        TcpWinsock sock;
        prepare(sock, address, m_authority.file());
        QSignalSpy connected(&sock, &Winsock::ConnectEvent);
        QSignalSpy changed(&sock, &Winsock::PrivacyChanged);
        QByteArray heard;
        connect(&sock, &Winsock::DataArrival, this, [&] { heard += sock.GetData(); });
        sock.Connect();
        QVERIFY(!sock.privacy().isPrivate());
        QTRY_COMPARE(connected.count(), 1);
        QCOMPARE(changed.count(), 1);
        QVERIFY2(sock.privacy().protocol.startsWith("TLSv1."_L1),
                 qPrintable(sock.privacy().protocol));
        QCOMPARE(sock.privacy().subject, u"irc.example"_s);
        QCOMPARE(sock.privacy().issuer, u"Test Authority"_s);
        QVERIFY(!sock.privacy().cipher.isEmpty());
        QVERIFY(sock.privacy().expiry > QDateTime::currentDateTime());

        sock.SendData("NICK me\r\n");
        QTRY_COMPARE(server.received(), "NICK me\r\n");
        server.say(QByteArray(200'000, 'x'));
        QTRY_COMPARE(heard.size(), 200'000);
        sock.SendData("QUIT :bye\r\n"); // leaves before the end of the line
        sock.Close();
        QVERIFY(!sock.privacy().isPrivate());
        QCOMPARE(changed.count(), 2);
        QTRY_VERIFY(server.peerHasGone());
        QVERIFY(server.received().endsWith("QUIT :bye\r\n"));
    }

    void trouble_data()
    {
        QTest::addColumn<QByteArray>("names"); // of the certificate; none: no TLS at all
        QTest::addColumn<int>("days");
        QTest::addColumn<bool>("known");
        QTest::addColumn<QByteArray>("says"); // without TLS
        QTest::addColumn<QStringList>("told");

        const QByteArray own = "IP:127.9.2.2";
        QTest::newRow("unknown authority")
            << own << 30 << false << QByteArray() << QStringList{u"Test Authority"_s, u"cafile"_s};
        QTest::newRow("another name") << QByteArray("DNS:irc.other") << 30 << true << QByteArray()
                                      << QStringList{u"for irc.other, not for 127.9.2.2"_s};
        QTest::newRow("expired") << own << -1 << true << QByteArray() << QStringList{u"expired"_s};
        QTest::newRow("expired and unknown")
            << own << -1 << false << QByteArray() << QStringList{u"expired"_s, u"cafile"_s};
        const QStringList noTls{u"does not speak TLS on port 6697"_s, u"irc://"_s};
        QTest::newRow("text") << QByteArray() << 0 << true
                              << QByteArray(":s NOTICE * :Looking up your hostname\r\n") << noTls;
        QTest::newRow("closed at once")
            << QByteArray() << 0 << true << QByteArray("close") << noTls;
        QTest::newRow("silent") << QByteArray() << 0 << true << QByteArray()
                                << QStringList{u"for 10 seconds"_s, noTls.first()};
    }
    void trouble()
    {
        QFETCH(QByteArray, names);
        QFETCH(int, days);
        QFETCH(bool, known);
        QFETCH(QByteArray, says);
        QFETCH(QStringList, told);
        const QString address = u"127.9.2.2"_s;
        const auto server =
            names.isEmpty()
                ? std::make_unique<ScriptedServer>(address, port)
                : std::make_unique<ScriptedServer>(address, port, m_authority.issue(names, days));
        QVERIFY(server->isListening());
        TcpWinsock sock;
        prepare(sock, address, known ? m_authority.file() : QString());
        if (names.isEmpty() && says.isEmpty())
            sock.setHandshakeTime(100);
        QStringList events;
        connect(&sock, &Winsock::ConnectEvent, this, [&] { events << u"connect"_s; });
        connect(&sock, &Winsock::CloseEvent, this, [&] { events << u"close"_s; });
        connect(&sock, &Winsock::DataArrival, this, [&] { events << u"data"_s; });
        connect(&sock, &Winsock::ErrorEvent, this,
                [&](int, const QString& description) { events << description; });
        sock.Connect();
        if (!says.isEmpty()) {
            QTRY_COMPARE(server->connections(), 1);
            if (says == "close")
                server->closePeer();
            else
                server->say(says);
        }
        QTRY_COMPARE(sock.state(), Winsock::Failed);
        QCOMPARE(events.size(), 1);
        for (const QString& part : told)
            QVERIFY2(events.first().contains(part), qPrintable(events.first()));
        sock.SendData("PASS secret\r\n"); // nothing ever goes in clear
        sock.Close();
        if (names.isEmpty())
            QTRY_VERIFY(server->peerHasGone());
        QVERIFY(!server->received().contains("secret"));
        QCOMPARE(events.size(), 1);
    }

    void wrongAuthoritiesFile()
    {
        TcpWinsock sock;
        prepare(sock, u"127.9.2.3"_s, u"/nowhere/ca.pem"_s);
        QSignalSpy failed(&sock, &Winsock::ErrorEvent);
        sock.Connect();
        QCOMPARE(failed.count(), 0); // not before the caller is done
        QTRY_COMPARE(failed.count(), 1);
        QVERIFY(failed.first().at(1).toString().contains("/nowhere/ca.pem"_L1));
    }

    void givenUpInTheHandshake()
    {
        const QString address = u"127.9.2.4"_s;
        ScriptedServer silent(address, port);
        TcpWinsock sock;
        prepare(sock, address, m_authority.file());
        sock.setHandshakeTime(50);
        QSignalSpy failed(&sock, &Winsock::ErrorEvent);
        sock.Connect();
        QTRY_COMPARE(silent.connections(), 1);
        sock.Close();
        QTRY_VERIFY(silent.peerHasGone());
        // The next attempt without TLS is one without TLS, and the old limit is not heard of.
        sock.Tls = false;
        sock.Connect();
        QTRY_COMPARE(sock.state(), Winsock::Connected);
        sock.SendData("NICK me\r\n");
        QTRY_VERIFY(silent.received().endsWith("NICK me\r\n"));
        QCOMPARE(failed.count(), 0);
    }

private:
    static constexpr quint16 port = 6697;

    static void prepare(TcpWinsock& sock, const QString& address, const QString& authorities)
    {
        sock.RemoteHost = address;
        sock.RemotePort = port;
        sock.Tls = true;
        sock.AuthoritiesFile = authorities;
    }

    TestAuthority m_authority;
};

QTEST_GUILESS_MAIN(TestWireTls)
#include "tst_wiretls.moc"
