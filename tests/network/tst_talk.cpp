#include "controls/xpButton.h"
#include "platform/Resources.h"
#include "support/TestClient.h"

#include <QLabel>
#include <QMenuBar>
#include <QNetworkProxy>
#include <QTcpSocket>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

namespace {

const QString passwordTitle = u"Enter Your NickName Password"_s;

// Somebody in the room who knows nothing but lines.
class Peer final
{
public:
    Peer(const QString& host, const QByteArray& nick)
    {
        static int number = 100; // the server asks those who come from here no ident question
        m_socket.setProxy(QNetworkProxy::NoProxy);
        m_socket.bind(QHostAddress(QString("127.0.1."_L1 + QString::number(++number))));
        m_socket.connectToHost(host, 6667);
        send("NICK " + nick + "\r\nUSER " + nick + " 0 * :A peer");
        if (!hears(" 001 "))
            QTest::qFail(m_heard.constData(), __FILE__, __LINE__);
        send("JOIN #Harbor");
        if (!hears(" 366 "))
            QTest::qFail(m_heard.constData(), __FILE__, __LINE__);
    }

    void send(const QByteArray& line) { m_socket.write(line + "\r\n"); }
    bool hears(const QByteArray& text)
    {
        return QTest::qWaitFor(
            [&] {
                m_heard += m_socket.readAll();
                return m_heard.contains(text);
            },
            15'000);
    }

private:
    QTcpSocket m_socket;
    QByteArray m_heard;
};

QWidget* formTitled(const QString& title)
{
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && window->windowTitle() == title)
            return window;
    }
    return nullptr;
}

void fillIn(QWidget* form, const QString& name, const QString& text)
{
    auto* field = form->findChild<QLineEdit*>(name);
    field->clear();
    QTest::keyClicks(field, text);
}

void press(QWidget* form, const QString& name)
{
    QTest::mouseClick(form->findChild<xpButton*>(name), Qt::LeftButton);
}

// The window of a private conversation; none while there is no such conversation.
QueryForm* talkWith(TestClient& client, const QString& nick)
{
    for (const auto& place : client.chatRoom().windows.queryFactory.places()) {
        if (place->QueryNick == nick && place->window())
            return place->window();
    }
    return nullptr;
}

bool privatelyReads(TestClient& client, const QString& nick, const QString& text)
{
    QueryForm* window = talkWith(client, nick);
    return window && window->isVisible() && window->DataIn().Text().contains(text);
}

void say(QueryForm& window, const QString& text)
{
    QTest::keyClicks(&window.DataOut(), text);
    QTest::keyClick(&window.DataOut(), Qt::Key_Return);
}

// Selected, and the captions of the menu on it as a right click leaves them.
void select(TestClient& client, const QString& row)
{
    client.window().lstNicks().setListIndex(static_cast<int>(client.chatters().indexOf(row)));
    client.chatRoom().main.nickActions.lstNicks_MouseDown();
}

} // namespace

// What people do to each other, and the services to them, on a real server. Every test has nicks
// of its own, so that nobody has to wait for the last one to be gone.
class TalkTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void privateConversation();
    void ctcp();
    void buddies();
    void passwordOfTheNick();
    void registration();
    void refusedNicks();
    void ranksBanAndKick();
    void block();

private:
    std::unique_ptr<TestClient> newClient() const;
    std::unique_ptr<TestClient> clientInRoom(const QString& nick,
                                             const QString& password = {}) const;

    QString m_host;
};

void TalkTest::initTestCase()
{
    m_host = qEnvironmentVariable("QH_NETWORK_HOST");
    if (m_host.isEmpty())
        QSKIP("needs a network: tests/network/with-network COMMAND");
    loadResources();
}

std::unique_ptr<TestClient> TalkTest::newClient() const
{
    static int number = 0;
    auto client =
        std::make_unique<TestClient>(m_host, nullptr, TestSurroundings::ownAddress(++number));
    client->start();
    return client;
}

std::unique_ptr<TestClient> TalkTest::clientInRoom(const QString& nick,
                                                   const QString& password) const
{
    auto client = newClient();
    client->signIn(nick, password);
    if (!QTest::qWaitFor([&] { return client->chatters().contains(nick); }, 15'000))
        QTest::qFail(qPrintable(client->conversation()), __FILE__, __LINE__);
    return client;
}

void TalkTest::privateConversation()
{
    const auto bea = clientInRoom(u"bea"_s);
    const auto cleo = clientInRoom(u"cleo"_s);
    QTRY_VERIFY(bea->chatters().contains(u"cleo"_s));
    select(*bea, u"cleo"_s);
    bea->click("mnu_nicks_pm");
    QueryForm* beas = talkWith(*bea, u"cleo"_s);
    QVERIFY(beas && beas->isVisible());
    QCOMPARE(beas->windowTitle(), u"cleo"_s);
    say(*beas, u"only between us"_s);
    QTRY_VERIFY(privatelyReads(*cleo, u"bea"_s, u"only between us"_s));
    QueryForm* cleos = talkWith(*cleo, u"bea"_s);
    const QString host = cleos->findChild<QLabel*>(u"lblHost"_s)->text();
    QVERIFY2(host.contains(u"Client-User@127."_s), qPrintable(host));
    say(*cleos, u"of course"_s);
    QTRY_VERIFY(privatelyReads(*bea, u"cleo"_s, u"of course"_s));
    QVERIFY(!bea->reads(u"of course"_s) && !cleo->reads(u"only between us"_s));

    cleo->click("mnu_File_changenick");
    QWidget* change = formTitled(u"Change NickName"_s);
    QVERIFY(change);
    fillIn(change, u"Text1"_s, u"cleopatra"_s);
    QTest::keyClick(change->findChild<QLineEdit*>(u"Text1"_s), Qt::Key_Return);
    QTRY_COMPARE(beas->windowTitle(), u"cleopatra"_s);
    QTRY_VERIFY(cleo->chatters().contains(u"cleopatra"_s));

    cleo->click("mnu_File_Disconnect");
    QTRY_VERIFY(privatelyReads(*bea, u"cleopatra"_s, u"cleopatra has Quit IRC"_s));
    cleo->field("Text1")->setReadOnly(false);
    cleo->signIn(u"cleopatra"_s);
    QTRY_VERIFY_WITH_TIMEOUT(bea->chatters().contains(u"cleopatra"_s), 15'000);
    QTRY_VERIFY(cleo->chatters().contains(u"bea"_s));
    QVERIFY(!talkWith(*cleo, u"bea"_s)); // a new connection begins without conversations
    say(*beas, u"there again"_s);
    QTRY_VERIFY(privatelyReads(*cleo, u"bea"_s, u"there again"_s));
}

void TalkTest::ctcp()
{
    Peer ann(m_host, "ann");
    const auto client = clientInRoom(u"vic"_s);
    ann.send("PRIVMSG vic :\1VERSION\1");
    QVERIFY(ann.hears("NOTICE ann :\1VERSION QuillHarbor Messenger 1.0\1"));
    ann.send("PRIVMSG vic :\1PING 123\1");
    QVERIFY(ann.hears("NOTICE ann :\1PING 0 seconds, cause Quill Harbor Messenger is elite.\1"));
    QVERIFY(client->reads(u"ann has just requested your version"_s));
    QVERIFY(client->reads(u"ann has just pinged you"_s));
    QVERIFY(!talkWith(*client, u"ann"_s));
}

void TalkTest::buddies()
{
    const auto client = clientInRoom(u"ben"_s);
    client->click("mnu_View_Buddylist");
    QWidget* list = formTitled(u"View Whois Online"_s);
    QVERIFY(list);
    const auto online = [&]() -> QString {
        press(list, u"cmdRefresh"_s);
        QTest::qWait(50); // the asking is repeated until it is answered as expected
        auto* rows = list->findChild<ListBoxWidget*>(u"lstNicks"_s);
        return rows->ListCount() == 1 ? rows->List(0) : QString();
    };
    client->around.dialogs.answerText = u"carl"_s;
    press(list, u"cmdAdd"_s);
    {
        Peer carl(m_host, "carl");
        QTRY_COMPARE(online(), u"carl"_s);
    }
    QTRY_COMPARE(online(), QString());
}

void TalkTest::passwordOfTheNick()
{
    const auto client = clientInRoom(u"adam"_s);
    QTRY_VERIFY(formTitled(passwordTitle));
    QVERIFY(!client->window().menus().bar()->isEnabled());
    fillIn(formTitled(passwordTitle), u"Text1"_s, u"guess"_s);
    press(formTitled(passwordTitle), u"cmdOk"_s);
    QTRY_VERIFY(client->reads(u"Password incorrect."_s));
    QTRY_VERIFY(formTitled(passwordTitle));
    fillIn(formTitled(passwordTitle), u"Text1"_s, u"adampass"_s);
    press(formTitled(passwordTitle), u"cmdOk"_s);
    QTRY_VERIFY(client->reads(u"Password accepted - you are now recognized."_s));
    QVERIFY(!formTitled(passwordTitle));
    QVERIFY(client->window().menus().bar()->isEnabled() && client->window().nickRows().isEnabled());
    client->say(u"IRC IDENTIFY adampass"_s);
    QTRY_VERIFY(client->reads(u"You are already identified."_s));
}

void TalkTest::registration()
{
    const auto client = clientInRoom(u"newt"_s);
    client->click("mnu_register_nickname");
    QWidget* form = formTitled(u"NickName Registration"_s);
    QVERIFY(form);
    fillIn(form, u"Text2"_s, u"salamander"_s);
    fillIn(form, u"Text3"_s, u"newt@pond.example"_s);
    press(form, u"cmdRegister"_s);
    QTRY_VERIFY(client->reads(u"Nickname newt registered."_s));

    // From now on the nick is his who knows the password.
    client->click("mnu_File_Disconnect");
    client->field("Text1")->setReadOnly(false);
    client->signIn(u"newt"_s, u"salamander"_s);
    QTRY_VERIFY_WITH_TIMEOUT(client->reads(u"Password accepted - you are now recognized."_s),
                             15'000);
}

void TalkTest::refusedNicks()
{
    const QString title = u"NickName Already In Use Or Invalid"_s;
    Peer dora(m_host, "dora");
    const auto client = newClient();
    client->signIn(u"dora"_s);
    QTRY_VERIFY_WITH_TIMEOUT(formTitled(title), 15'000);
    fillIn(formTitled(title), u"Text1"_s, u"dorothy"_s);
    press(formTitled(title), u"cmdOk"_s);
    QTRY_VERIFY_WITH_TIMEOUT(client->chatters().contains(u"dorothy"_s), 15'000);
    QVERIFY(dora.hears(":dorothy!"));

    client->say(u"IRC NICK 9lives"_s);
    QTRY_COMPARE(client->around.dialogs.shown,
                 QStringList{u"Invalid Name Or Nick Already In Use|Choose Another Nick"_s});
    QTRY_VERIFY(formTitled(title));
    fillIn(formTitled(title), u"Text1"_s, u"dot"_s);
    press(formTitled(title), u"cmdOk"_s);
    QVERIFY(dora.hears("NICK :dot"));
    QTRY_VERIFY(client->chatters().contains(u"dot"_s));
}

void TalkTest::ranksBanAndKick()
{
    Peer moe(m_host, "moe");
    const auto client = clientInRoom(u"harbormaster"_s);
    QTRY_VERIFY(formTitled(passwordTitle));
    fillIn(formTitled(passwordTitle), u"Text1"_s, u"lighthouse"_s);
    press(formTitled(passwordTitle), u"cmdOk"_s);
    QTRY_VERIFY(client->chatters().contains(u"@harbormaster"_s));
    const NickList& nicks = client->chatRoom().main.room.nicks;
    struct Rank
    {
        const char* entry;
        QByteArray letter;
        QString row;
        bool (NickList::*holds)(const QString&) const;
    };
    for (const Rank& rank :
         {Rank{"mnu_nicks_op", "o", u"@moe"_s, &NickList::isOp},
          Rank{"mnu_nicks_halfop", "h", u"moe"_s, &NickList::isHalfOp}, // has no sign in the list
          Rank{"mnu_nicks_voice", "v", u"+moe"_s, &NickList::isVoice}}) {
        select(*client, u"moe"_s);
        client->click(rank.entry);
        QVERIFY2(moe.hears("MODE #Harbor +" + rank.letter + " :moe"), rank.entry);
        QTRY_VERIFY((nicks.*rank.holds)(u"moe"_s));
        QTRY_VERIFY2(client->chatters().contains(rank.row), rank.entry);
        select(*client, rank.row);
        client->click(rank.entry);
        QVERIFY2(moe.hears("MODE #Harbor -" + rank.letter + " :moe"), rank.entry);
        QTRY_VERIFY(!(nicks.*rank.holds)(u"moe"_s));
        QTRY_VERIFY2(client->chatters().contains(u"moe"_s), rank.entry);
    }

    select(*client, u"moe"_s);
    client->click("mnu_nicks_ban");
    QVERIFY(moe.hears("MODE #Harbor +b :moe!*@*"));
    client->click("mnu_chan_ban");
    QTreeWidget* bans = nullptr;
    const auto listed = [&bans] {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            bans = window->isVisible() ? window->findChild<QTreeWidget*>(u"lvBans"_s) : nullptr;
            if (bans && bans->topLevelItemCount() == 1 && !bans->topLevelItem(0)->text(2).isEmpty())
                return true;
        }
        return false;
    };
    QTRY_VERIFY(listed());
    QCOMPARE(bans->topLevelItem(0)->text(0), u"moe!*@*"_s);
    QCOMPARE(bans->topLevelItem(0)->text(1), u"harbormaster"_s);
    bans->window()->close();

    select(*client, u"moe"_s);
    client->around.dialogs.answerText = u"enough now"_s;
    client->click("mnu_nicks_kick");
    QVERIFY(moe.hears("KICK #Harbor moe :enough now"));
    QTRY_VERIFY(!client->chatters().contains(u"moe"_s));
    moe.send("JOIN #Harbor");
    QVERIFY(moe.hears(" 474 "));
}

void TalkTest::block()
{
    const auto client = clientInRoom(u"meg"_s);
    Peer zed(m_host, "zed");
    QTRY_VERIFY(client->chatters().contains(u"zed"_s));
    select(*client, u"zed"_s);
    client->click("mnu_blocked");
    QVERIFY(zed.hears(" PRIVMSG zed :"));
    zed.send("PRIVMSG meg :listen to me");
    zed.send("PRIVMSG #Harbor :are you there?");
    QTRY_VERIFY(client->reads(u"are you there?"_s)); // which was sent last
    QVERIFY(!talkWith(*client, u"zed"_s));
    QVERIFY(!client->reads(u"listen to me"_s));
}

QTEST_MAIN(TalkTest)
#include "tst_talk.moc"
