#include "support/ScriptedServer.h"
#include "support/TestAuthority.h"
#include "wire/TcpWinsock.h"

#include <QtTest>

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
        QVERIFY(sock.privacy().protocol.startsWith("TLSv1."_L1));
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
        QTest::addColumn<QString>("authorities"); // the file that names them
        QTest::addColumn<QByteArray>("says");     // without TLS
        QTest::addColumn<QString>("told");

        const auto row = [](const char* name, const QByteArray& certified, int days,
                            const QString& authorities, const QByteArray& says,
                            const QString& told) {
            QTest::newRow(name) << certified << days << authorities << says << told;
        };
        const QByteArray own = "IP:127.9.2.2";
        const QString known = m_authority.file();
        const QString unknown =
            u"The certificate of 127.9.2.2 is issued by Test Authority, an authority that is not "
            "known here. For a private network, name the file of its authority in the setting "
            "connect/cafile."_s;
        const QString expired =
            u"The certificate of 127.9.2.2 has expired on DATE. Whoever runs the server must renew "
            "it; check this computer's date, too."_s;
        const QString noTls =
            u"127.9.2.2 does not speak TLS on port 6697. Check the port; an address that begins "
            "with irc:// goes without TLS, and then everything goes in clear."_s;
        row("unknown authority", own, 30, {}, {}, unknown);
        row("another name", "DNS:irc.other", 30, known, {},
            u"The certificate is for irc.other, not for 127.9.2.2. Check the name in the address; "
            "it may be another server that answers."_s);
        row("expired", own, -1, known, {}, expired);
        row("expired and unknown", own, -1, {}, {}, unknown + u' ' + expired);
        row("no such file", own, 30, u"/nowhere/ca.pem"_s, {},
            u"The file /nowhere/ca.pem of the setting connect/cafile has no certificate that can "
            u"be read."_s);
        row("text", {}, 0, known, ":s NOTICE * :Looking up your hostname\r\n", noTls);
        row("closed at once", {}, 0, known, "close", noTls);
        row("silent", {}, 0, known, {},
            "127.9.2.2 has not answered in TLS for 10 seconds. "_L1 + noTls);
    }
    void trouble()
    {
        QFETCH(QByteArray, names);
        QFETCH(int, days);
        QFETCH(QString, authorities);
        QFETCH(QByteArray, says);
        QFETCH(QString, told);
        const QString address = u"127.9.2.2"_s;
        const auto server =
            names.isEmpty()
                ? std::make_unique<ScriptedServer>(address, port)
                : std::make_unique<ScriptedServer>(address, port, m_authority.issue(names, days));
        QVERIFY(server->isListening());
        TcpWinsock sock;
        prepare(sock, address, authorities);
        if (names.isEmpty() && says.isEmpty())
            sock.setHandshakeTime(100);
        QStringList events;
        connect(&sock, &Winsock::ConnectEvent, this, [&] { events << u"connect"_s; });
        connect(&sock, &Winsock::CloseEvent, this, [&] { events << u"close"_s; });
        connect(&sock, &Winsock::DataArrival, this, [&] { events << u"data"_s; });
        connect(&sock, &Winsock::ErrorEvent, this,
                [&](int, const QString& description) { events << description; });
        sock.Connect();
        QCOMPARE(events, QStringList()); // not before the caller is done
        if (!says.isEmpty()) {
            QTRY_COMPARE(server->connections(), 1);
            if (says == "close")
                server->closePeer();
            else
                server->say(says);
        }
        QTRY_COMPARE(sock.state(), Winsock::Failed);
        static const QRegularExpression date(u"expired on .*?\\. Whoever"_s);
        QCOMPARE(events.join(u'|').replace(date, u"expired on DATE. Whoever"_s), told);
        sock.SendData("PASS secret\r\n"); // nothing ever goes in clear
        if (names.isEmpty())
            QTRY_VERIFY(server->peerHasGone());
        sock.Close();
        QVERIFY(!server->received().contains("secret"));
        QCOMPARE(events.size(), 1);
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
