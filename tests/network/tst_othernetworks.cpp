#include "controls/xpButton.h"
#include "desktop/LineLock.h"
#include "network/Kit.h"
#include "platform/Resources.h"

#include <QtWidgets>

using namespace Qt::StringLiterals;

namespace {

constexpr int plainPort = 6668;
const QString room = u"#quay"_s;
const QString letters = u"Grüße, naïve, Привет, 日本語, 🙂"_s;

// The text of the private lines of one sender to the peer, put together again, without colours and
// styles.
QString toldBy(const QString& nick, const Peer& peer)
{
    static const QRegularExpression formats(u"\\x03[0-9,]*|[\\x02\\x0f\\x16\\x1d\\x1f]"_s);
    QString told;
    for (const QString& line : QString::fromUtf8(peer.heard()).split(u"\r\n"_s)) {
        const qsizetype text = line.indexOf(" :"_L1);
        if (line.startsWith(u':' + nick + u'!') && line.contains(" PRIVMSG peer "_L1) && text > 0)
            told += QString(line.mid(text + 2)).remove(formats);
    }
    return told;
}

// More than a line holds.
QString longText()
{
    QString text;
    for (int i = 1; text.size() < 700; ++i)
        text += "word"_L1 + QString::number(i) + (i % 7 ? " "_L1 : ", "_L1);
    return text.left(699) + u'.';
}

} // namespace

// Whole programs on a network of today, in clear and on a private line: what they say arrives, and
// what keeps a line from being private is told.
class OtherNetworksTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_host = qEnvironmentVariable("QH_NETWORK_HOST");
        if (m_host.isEmpty())
            QSKIP("needs a network: tests/network/with-network COMMAND");
        m_authority = qEnvironmentVariable("QH_NETWORK_DIR") + "/tls/authority.pem"_L1;
        QVERIFY(QFile::exists(m_authority));
        loadResources();
    }
    void cleanup() { m_client.reset(); }

    // What the program says stays within the pace that the strictest servers allow at once: nothing
    // has to wait.
    void talksInClear()
    {
        start(u"irc://%:6668"_s);
        QVERIFY(lock().isEmpty()); // there is no line yet
        m_client->signIn(u"ann"_s);
        QVERIFY2(isThere(*m_client, u"@ann"_s), qPrintable(m_client->conversation()));
        QVERIFY2(lock().contains(u"is open"_s), qPrintable(lock()));
        const auto peer = newPeer();
        peer->send("PRIVMSG ann :five words from the peer");
        QTRY_VERIFY(talkWith(*m_client, u"peer"_s));
        QueryForm& talk = *talkWith(*m_client, u"peer"_s);
        for (const QString& text :
             {u"five words of this line"_s, u":) begins with a colon"_s, letters, longText()}) {
            peer->forget();
            say(talk, text);
            QTRY_COMPARE_WITH_TIMEOUT(toldBy(u"ann"_s, *peer).trimmed(), text, patience);
        }
        peer->send("PRIVMSG ann ::so a colon begins it");
        QTRY_VERIFY(talk.DataIn().Text().contains(u":so a colon begins it"_s));
        QVERIFY(talk.DataIn().Text().contains(u"five words from the peer"_s));
        m_client->click("mnu_File_Disconnect");
        QVERIFY(lock().isEmpty());
    }

    void talksOnAPrivateLine()
    {
        start(u"ircs://%"_s);
        m_client->messenger.login().findChild<QToolButton*>(u"lnkNetwork"_s)->click();
        QWidget* form = windowTitled(u"Choose a Network"_s);
        form->findChild<QComboBox*>(u"cmbServer"_s)->setEditText("ircs://"_L1 + m_host);
        form->findChild<xpButton*>(u"cmdTry"_s)->click();
        auto* found = form->findChild<QLabel*>(u"lblTrial"_s);
        QTRY_VERIFY(found->text().contains(u"Quill Harbor test authority"_s));
        QVERIFY(found->text().contains(u"✓ The line is private: TLSv1."_s));
        form->close();
        m_client->signIn(u"bob"_s);
        QVERIFY2(isThere(*m_client, u"@bob"_s), qPrintable(m_client->conversation()));
        QVERIFY2(lock().contains(u"is private, by TLSv1."_s), qPrintable(lock()));
        const auto peer = newPeer();
        QVERIFY(isThere(*m_client, u"peer"_s));
        const QByteArray in = room.toUtf8();
        auto* input = m_client->window().findChild<QLineEdit*>(u"DataOut"_s);
        input->setText(letters);
        QTest::keyClick(input, Qt::Key_Return);
        QVERIFY(peer->hears(letters.toUtf8()));
        m_client->connection().SendData(u"AWAY gone for a walk"_s);
        const auto isAway = [&] {
            peer->send("WHOIS bob");
            return peer->has(" 301 peer bob :gone for a walk");
        };
        QTRY_VERIFY2(isAway(), peer->heard().constData());
        m_client->connection().SendData("TOPIC "_L1 + room + " a topic of "_L1 + letters);
        QVERIFY(peer->hears("TOPIC " + in + " :a topic of " + letters.toUtf8()));
        QTRY_VERIFY(m_client->topic().endsWith("topic of "_L1 + letters));
        // What the server does not take of one comes back by the arrow key.
        m_client->connection().SendData("TOPIC "_L1 + room + u" :"_s + QString(307, u'x') +
                                        "too much"_L1);
        QTRY_VERIFY(m_client->reads(u"kept for the arrow keys: too much"_s));
        QTest::keyClick(input, Qt::Key_Up);
        QCOMPARE(input->text(), u"too much"_s);
        peer->send("PRIVMSG " + in + " :" + letters.toUtf8());
        peer->send("PRIVMSG " + in + " :old letters: gr\xfc\xdf"); // of a client of another time
        QTRY_VERIFY(m_client->reads("<peer> "_L1 + letters));
        QTRY_VERIFY(m_client->reads(u"old letters: grüß"_s));
        m_client->connection().SendData("KICK "_L1 + room + " peer too loud for us"_L1);
        QVERIFY(peer->hears("KICK " + in + " peer :too loud for us"));
        QTRY_VERIFY(!m_client->chatters().contains(u"peer"_s));
    }

    void refuses_data()
    {
        QTest::addColumn<QString>("address");
        QTest::addColumn<QString>("told"); // a part of it
        QTest::addColumn<bool>("again");   // an attempt is made, but not to a server that hangs up

        QTest::newRow("unknown authority") << u"ircs://%"_s << u"is not known here"_s << true;
        QTest::newRow("plain to a TLS port")
            << u"irc://%:6697"_s << u"may take TLS only"_s << false;
    }

    void refuses()
    {
        QFETCH(QString, address);
        QFETCH(QString, told);
        start(address, false);
        m_client->signIn(u"cid"_s);
        QVERIFY2(QTest::qWaitFor([&] { return m_client->reads(told); }, patience),
                 qPrintable(m_client->conversation()));
        QTEST(m_client->connection().isWaitingToRetry(), "again");
        QCOMPARE(m_client->state(), u"&Connect on off"_s);
        QVERIFY(lock().isEmpty());
        QVERIFY(!m_client->reads(u"\x15\x03"_s)); // no byte of TLS in the view
        QTRY_VERIFY(m_client->looksSignedOut());
    }

    void signsInToAccounts_data()
    {
        QTest::addColumn<QString>("password");
        QTest::addColumn<QString>("told");
        QTest::addColumn<bool>("known"); // to the services

        QTest::newRow("right") << u"wonderland"_s << u"You are signed in to the account of alice."_s
                               << true;
        QTest::newRow("wrong") << u"looking glass"_s << u"did not sign you in"_s << false;
    }

    void signsInToAccounts()
    {
        QFETCH(QString, password);
        QFETCH(QString, told);
        QFETCH(bool, known);
        start(u"ircs://%"_s);
        m_client->signIn(u"alice"_s, password);
        QVERIFY2(isThere(*m_client, u"@alice"_s), qPrintable(m_client->conversation()));
        QTRY_VERIFY(m_client->reads(told));
        const auto peer = newPeer();
        peer->send("WHOIS alice");
        QVERIFY(peer->hears(" 318 "));
        QCOMPARE(peer->has(" 330 peer alice alice "), known);
        QVERIFY(peer->has(" 671 "));
    }

private:
    void start(const QString& address, bool trusted = true)
    {
        m_client = std::make_unique<TestClient>(QString(address).replace(u'%', m_host), nullptr,
                                                quietAddress());
        QVERIFY(m_client->around.writeSettings(
            "[connect]\nautojoin=" + room.toUtf8() + '\n' +
            (trusted ? "cafile=" + m_authority.toUtf8() + '\n' : QByteArray())));
        m_client->start();
    }
    std::unique_ptr<Peer> newPeer() const
    {
        auto peer = std::make_unique<Peer>(m_host, "peer", plainPort);
        peer->enter(room.toUtf8());
        return peer;
    }
    QString lock() { return m_client->window().lock().accessibleName(); }

    QString m_host;
    QString m_authority;
    std::unique_ptr<TestClient> m_client;
};

QTEST_MAIN(OtherNetworksTest)
#include "tst_othernetworks.moc"
