#include "controls/xpButton.h"
#include "desktop/LineLock.h"
#include "platform/Resources.h"
#include "support/TestClient.h"

#include <QComboBox>
#include <QLabel>
#include <QNetworkProxy>
#include <QRegularExpression>
#include <QTcpServer>
#include <QTcpSocket>

using namespace Qt::StringLiterals;

namespace {

constexpr int plainPort = 6668;
constexpr int limit = 10'000; // within which every trouble is told

const QString room = u"#quay"_s;

// Somebody in the room who knows nothing but lines, as they are sent today.
class Peer final
{
public:
    Peer(const QString& host, const QByteArray& nick)
    {
        m_socket.setProxy(QNetworkProxy::NoProxy);
        m_socket.bind(QHostAddress(u"127.0.1.99"_s)); // asked no ident question
        m_socket.connectToHost(host, plainPort);
        send("NICK " + nick + "\r\nUSER " + nick + " 0 * :A peer");
        hears(u" 001 "_s);
        send("JOIN " + room.toUtf8());
        hears(u" 366 "_s);
    }

    void send(const QByteArray& line) { m_socket.write(line + "\r\n"); }
    bool hears(const QString& text)
    {
        return QTest::qWaitFor(
            [&] {
                m_heard += m_socket.readAll();
                return heard().contains(text);
            },
            15'000);
    }
    QString heard() const { return QString::fromUtf8(m_heard); }
    void forget() { m_heard.clear(); }

    // The text of the private lines of one sender, put together again, without colours and styles.
    QString toldBy(const QString& nick) const
    {
        static const QRegularExpression formats(u"\\x03[0-9,]*|[\\x02\\x0f\\x16\\x1d\\x1f]"_s);
        QString told;
        for (const QString& line : heard().split(u"\r\n"_s)) {
            const QString head = u':' + nick + u'!';
            const qsizetype text = line.indexOf(" :"_L1);
            if (line.startsWith(head) && line.contains(" PRIVMSG peer "_L1) && text > 0)
                told += QString(line.mid(text + 2)).remove(formats);
        }
        return told;
    }

private:
    QTcpSocket m_socket;
    QByteArray m_heard;
};

QString longText()
{
    QString text;
    for (int i = 1; text.size() < 1500; ++i)
        text += "word"_L1 + QString::number(i) + (i % 7 ? " "_L1 : ", "_L1);
    return text.left(1499) + u'.';
}

const QString letters = u"Grüße, naïve, Привет, 日本語, 🙂"_s;

} // namespace

// Whole programs on a network of today, in clear and on a private line: what they say arrives, and
// what keeps a line from being private is told.
class OtherNetworksTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup() { m_client.reset(); }

    void talks_data();
    void talks();
    void refuses_data();
    void refuses();
    void signsInToAccounts_data();
    void signsInToAccounts();
    void triesFromTheForm();

private:
    void start(const QString& address, bool trusted = true);
    bool enters(const QString& nick);
    void say(const QString& text)
    {
        auto* input = m_client->window().findChild<QLineEdit*>(u"DataOut"_s);
        input->setText(text);
        QTest::keyClick(input, Qt::Key_Return);
    }
    QueryForm* talk() // with the peer; none before the first word
    {
        for (const auto& place : m_client->chatRoom().windows.queryFactory.places()) {
            if (place->QueryNick == u"peer"_s && place->window())
                return place->window();
        }
        return nullptr;
    }
    QString lock() { return m_client->window().lock().accessibleName(); }
    QString withPlaces(QString address) const { return address.replace(u'%', m_host); }

    QString m_host;
    QString m_authority;
    std::unique_ptr<TestClient> m_client;
    int m_number = 0;
};

void OtherNetworksTest::initTestCase()
{
    m_host = qEnvironmentVariable("QH_NETWORK_HOST");
    if (m_host.isEmpty())
        QSKIP("needs a network: tests/network/with-network COMMAND");
    m_authority = qEnvironmentVariable("QH_NETWORK_DIR") + "/tls/authority.pem"_L1;
    QVERIFY(QFile::exists(m_authority));
    loadResources();
}

void OtherNetworksTest::start(const QString& address, bool trusted)
{
    m_client =
        std::make_unique<TestClient>(address, nullptr, TestSurroundings::ownAddress(++m_number));
    QVERIFY(m_client->around.writeSettings(
        "[connect]\nautojoin=" + room.toUtf8() + '\n' +
        (trusted ? "cafile=" + m_authority.toUtf8() + '\n' : QByteArray())));
    m_client->start();
}

bool OtherNetworksTest::enters(const QString& nick)
{
    m_client->signIn(nick);
    return QTest::qWaitFor([&] { return m_client->chatters().join(u' ').contains(nick); }, 20'000);
}

void OtherNetworksTest::talks_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("lock"); // a part of what it says

    QTest::newRow("irc") << u"irc://%:6668"_s << u"is open"_s;
    QTest::newRow("ircs") << u"ircs://%"_s << u"is private, by TLSv1."_s;
}

void OtherNetworksTest::talks()
{
    QFETCH(QString, address);
    QFETCH(QString, lock);
    start(withPlaces(address));
    QVERIFY(this->lock().isEmpty()); // there is no line yet
    const QString nick = "ann"_L1 + QString::number(m_number);
    QVERIFY2(enters(nick), qPrintable(m_client->conversation()));
    QVERIFY2(this->lock().contains(lock), qPrintable(this->lock()));
    Peer peer(m_host, "peer");
    QTRY_VERIFY(m_client->chatters().contains(u"peer"_s));

    // From here to there: what was typed, whole.
    peer.send("PRIVMSG " + nick.toUtf8() + " :five words from the peer");
    QTRY_VERIFY(talk());
    QLineEdit& input = talk()->DataOut();
    const auto privateText = [this] { return talk()->DataIn().Text(); };
    for (const QString& text :
         {u"five words of this line"_s, u":) begins with a colon"_s, letters, longText()}) {
        peer.forget();
        input.setText(text);
        QTest::keyClick(&input, Qt::Key_Return);
        QVERIFY(QTest::qWaitFor(
            [&] {
                peer.hears(u"PRIVMSG"_s);
                return peer.toldBy(nick).trimmed() == text;
            },
            20'000));
    }
    say(letters);
    QVERIFY(peer.hears(letters));
    m_client->connection().SendData(u"AWAY gone for a walk"_s);
    const auto isAway = [&] {
        peer.forget();
        peer.send("WHOIS " + nick.toUtf8());
        return peer.hears(u" 318 "_s) &&
               peer.heard().contains(u" 301 peer %1 :gone for a walk"_s.arg(nick));
    };
    QTRY_VERIFY2(isAway(), qPrintable(peer.heard()));
    m_client->connection().SendData("TOPIC "_L1 + room + " a topic of "_L1 + letters);
    QVERIFY(peer.hears("TOPIC "_L1 + room + " :a topic of "_L1 + letters));
    QTRY_VERIFY(m_client->topic().endsWith("topic of "_L1 + letters));

    // From there to here.
    const QByteArray me = nick.toUtf8();
    const QByteArray in = room.toUtf8();
    peer.send("PRIVMSG " + me + " ::so a colon begins it");
    QTRY_VERIFY(privateText().contains(u":so a colon begins it"_s));
    QVERIFY(privateText().contains(u"five words from the peer"_s));
    peer.send("PRIVMSG " + in + " :" + letters.toUtf8());
    peer.send("PRIVMSG " + in + " :old letters: gr\xfc\xdf"); // of a client of another time
    QTRY_VERIFY(m_client->reads(letters));
    QTRY_VERIFY(m_client->reads(u"old letters: grüß"_s));
    m_client->connection().SendData("KICK "_L1 + room + " peer too loud for us"_L1);
    QVERIFY(peer.hears(u"KICK %1 peer :too loud for us"_s.arg(room)));
    QTRY_VERIFY(!m_client->chatters().contains(u"peer"_s));
    m_client->click("mnu_File_Disconnect");
    QVERIFY(this->lock().isEmpty());
}

void OtherNetworksTest::refuses_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<bool>("trusted");
    QTest::addColumn<QString>("told"); // a part of it

    QTest::newRow("unknown authority") << u"ircs://%"_s << false << u"is not known here"_s;
    QTest::newRow("another name") << u"ircs://%:6698"_s << true << u"not for"_s;
    QTest::newRow("expired") << u"ircs://%:6699"_s << true << u"has expired"_s;
    QTest::newRow("TLS to a plain port") << u"ircs://%:6668"_s << true << u"does not speak TLS"_s;
    QTest::newRow("silence") << u"ircs://127.0.0.1:@"_s << true << u"has not answered"_s;
    QTest::newRow("plain to a TLS port") << u"irc://%:6697"_s << true << u"may take TLS only"_s;
    QTest::newRow("nobody") << u"ircs://%:1"_s << true << u"ERROR : "_s;
    QTest::newRow("wrong address") << u"ftp://%"_s << true << u"ERROR : "_s;
}

void OtherNetworksTest::refuses()
{
    QFETCH(QString, address);
    QFETCH(bool, trusted);
    QFETCH(QString, told);
    QTcpServer silent;
    QVERIFY(silent.listen(QHostAddress::LocalHost));
    start(withPlaces(address).replace(u'@', QString::number(silent.serverPort())), trusted);
    m_client->signIn(u"ann"_s);
    int turns = 0;
    QTimer alive;
    connect(&alive, &QTimer::timeout, this, [&turns] { ++turns; });
    alive.start(50);
    const bool inTime = QTest::qWaitFor([&] { return m_client->reads(told); },
                                        limit + 2'000); // and some for a busy machine
    QVERIFY2(inTime, qPrintable(m_client->conversation()));
    QTRY_VERIFY(turns > 0);
    // As ever: an attempt that failed is made again, but not to a server that hangs up.
    QCOMPARE(m_client->connection().isWaitingToRetry(), !address.startsWith("irc:"_L1));
    QCOMPARE(m_client->state(), u"&Connect on off"_s);
    QVERIFY(lock().isEmpty());
    QVERIFY(!m_client->reads(u"\x15\x03"_s)); // no byte of TLS in the view
    QTRY_VERIFY(m_client->looksSignedOut());
}

void OtherNetworksTest::signsInToAccounts_data()
{
    QTest::addColumn<QString>("password");
    QTest::addColumn<QString>("told");
    QTest::addColumn<bool>("known"); // to the services

    QTest::newRow("right") << u"wonderland"_s << u"You are signed in to the account of alice."_s
                           << true;
    QTest::newRow("wrong") << u"looking glass"_s << u"did not sign you in"_s << false;
}

void OtherNetworksTest::signsInToAccounts()
{
    QFETCH(QString, password);
    QFETCH(QString, told);
    QFETCH(bool, known);
    start(withPlaces(u"ircs://%"_s));
    m_client->signIn(u"alice"_s, password);
    QVERIFY2(QTest::qWaitFor([&] { return m_client->reads(told); }, 20'000),
             qPrintable(m_client->conversation()));
    QVERIFY(QTest::qWaitFor([&] { return m_client->chatters().join(u' ').contains(u"alice"_s); },
                            20'000));
    Peer peer(m_host, "peer");
    peer.send("WHOIS alice");
    QVERIFY(peer.hears(u" 318 "_s));
    QCOMPARE(peer.heard().contains(u" 330 peer alice alice "_s), known);
    QVERIFY(peer.heard().contains(u" 671 "_s));
}

void OtherNetworksTest::triesFromTheForm()
{
    start(withPlaces(u"ircs://%"_s));
    m_client->messenger.login().findChild<QToolButton*>(u"lnkNetwork"_s)->click();
    QWidget* form = QApplication::activeWindow();
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && window->objectName() == "NetworkForm"_L1)
            form = window;
    }
    const auto result = [&](const QString& address) {
        form->findChild<QComboBox*>(u"cmbServer"_s)->setEditText(withPlaces(address));
        auto* button = form->findChild<xpButton*>(u"cmdTry"_s);
        button->click();
        if (!QTest::qWaitFor([&] { return button->Caption() == "Try It"_L1; }, limit + 2'000))
            return QString();
        return form->findChild<QLabel*>(u"lblTrial"_s)->text();
    };
    const QString good = result(u"ircs://%"_s);
    QVERIFY2(good.contains(u"✓ The line is private: TLSv1."_s), qPrintable(good));
    QVERIFY2(good.contains(u"Quill Harbor test authority"_s), qPrintable(good));
    const QString bad = result(u"ircs://%:6699"_s);
    QVERIFY2(bad.contains(u"✗"_s) && bad.contains(u"has expired"_s), qPrintable(bad));
}

QTEST_MAIN(OtherNetworksTest)
#include "tst_othernetworks.moc"
