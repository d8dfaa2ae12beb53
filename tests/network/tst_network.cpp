#include "controls/xpButton.h"
#include "network/Kit.h"
#include "platform/Resources.h"

#include <QtWidgets>

using namespace Qt::StringLiterals;

namespace {

const QString passwordTitle = u"Enter Your NickName Password"_s;

void press(QWidget* form, const QString& name)
{
    QTest::mouseClick(form->findChild<xpButton*>(name), Qt::LeftButton);
}

void fillIn(QWidget* form, const QString& name, const QString& text)
{
    auto* field = form->findChild<QLineEdit*>(name);
    field->clear();
    QTest::keyClicks(field, text);
}

void answer(const QString& title, const QString& text)
{
    fillIn(windowTitled(title), u"Text1"_s, text);
    press(windowTitled(title), u"cmdOk"_s);
}

bool privatelyReads(TestClient& client, const QString& nick, const QString& text)
{
    QueryForm* window = talkWith(client, nick);
    return window && window->isVisible() && window->DataIn().Text().contains(text);
}

// Selected, and the captions of the menu on it as a right click leaves them.
void select(TestClient& client, const QString& row)
{
    client.window().lstNicks().setListIndex(static_cast<int>(client.chatters().indexOf(row)));
    client.chatRoom().main.nickActions.lstNicks_MouseDown();
}

} // namespace

// Whole programs on a real server of the house: what one does, others see, and what people and
// services do to each other. Every test has nicks of its own, so that nobody has to wait for the
// last one to be gone.
class NetworkTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_host = qEnvironmentVariable("QH_NETWORK_HOST");
        if (m_host.isEmpty())
            QSKIP("needs a network: tests/network/with-network COMMAND");
        loadResources();
    }

    void entersTheRoom()
    {
        const auto master = peerInRoom("harbormaster", "lighthouse");
        const auto vera = peerInRoom("vera", "verapass");
        const auto hal = peerInRoom("hal", "halpass");
        const auto ann = peerInRoom("ann");
        QVERIFY(master->hears("+v :vera") && master->hears("+h :hal"));
        const auto client = clientInRoom(u"bea"_s);
        QTRY_VERIFY(client->reads(u"Checking Your Internet Connection"_s));
        QCOMPARE(client->state(), u"&Connect off on"_s);
        QVERIFY(client->reads(u"You have entered to the chat room"_s));
        QVERIFY(client->topic().startsWith("Welcome to Quill Harbor"_L1));
        QTRY_COMPARE(client->chatters(),
                     (QStringList{u"+vera"_s, u"@harbormaster"_s, u"ann"_s, u"bea"_s, u"hal"_s}));
        QVERIFY(client->chatRoom().main.room.nicks.isHalfOp(u"hal"_s));

        // What the server made of the lines that the client registered with.
        ann->send("WHOIS bea");
        QVERIFY(ann->hears(" 318 "));
        QVERIFY(ann->has(QSysInfo::machineHostName().toUtf8() + "Client-User "));
        QVERIFY(ann->has(":Quill Harbor Messenger V 1.0"));
    }

    void talksInTheRoom()
    {
        const auto dee = clientInRoom(u"dee"_s);
        const auto cleo = clientInRoom(u"cleo"_s);
        const auto amy = peerInRoom("amy");
        dee->say(u"hello cleo"_s);
        QTRY_VERIFY(cleo->reads(u"<dee>  hello cleo"_s));
        QVERIFY(amy->hears("PRIVMSG #Harbor :\x03"
                           "1 hello cleo\r\n"));
        cleo->say(u"!hello  dee"_s);
        QTRY_VERIFY(dee->reads(u"<cleo> !hello  dee"_s));
        QVERIFY(amy->hears("PRIVMSG #Harbor :!hello  dee\r\n"));
        amy->send("PRIVMSG #Harbor :\x02hello\x02 \x03"
                  "4both\x03 of you");
        for (const auto* client : {&dee, &cleo})
            QTRY_VERIFY((*client)->reads(u"<amy> hello both of you"_s));
        dee->say(u"IRC PRIVMSG amy :only you"_s);
        QVERIFY(amy->hears("PRIVMSG amy :only you"));
        QCOMPARE(dee->conversation().count(u"hello cleo"_s), 1); // the echo; the server sends none
        amy->send("PRIVMSG dee :\1VERSION\1");
        QVERIFY(amy->hears("NOTICE amy :\1VERSION QuillHarbor Messenger 1.0\1"));
        QVERIFY(!talkWith(*dee, u"amy"_s));

        dee->click("mnu_File_Disconnect");
        QVERIFY(amy->hears("QUIT :Quit: Quill Harbor Messenger v 1.0   "));
        QVERIFY(dee->reads(u"You are Disconnected from Quill Harbor Server"_s));
        QCOMPARE(dee->state(), u"&Connect on off"_s);
    }

    void talksInPrivate()
    {
        const auto eve = clientInRoom(u"eve"_s);
        const auto fay = clientInRoom(u"fay"_s);
        QVERIFY(isThere(*eve, u"fay"_s));
        select(*eve, u"fay"_s);
        eve->click("mnu_nicks_pm");
        QueryForm* eves = talkWith(*eve, u"fay"_s);
        QVERIFY(eves && eves->isVisible());
        say(*eves, u"only between us"_s);
        QTRY_VERIFY(privatelyReads(*fay, u"eve"_s, u"only between us"_s));
        QueryForm* fays = talkWith(*fay, u"eve"_s);
        const QString host = fays->findChild<QLabel*>(u"lblHost"_s)->text();
        QVERIFY2(host.contains(u"Client-User@127."_s), qPrintable(host));
        say(*fays, u"of course"_s);
        QTRY_VERIFY(privatelyReads(*eve, u"fay"_s, u"of course"_s));
        QVERIFY(!eve->reads(u"of course"_s) && !fay->reads(u"only between us"_s));

        fay->click("mnu_File_Disconnect");
        QTRY_VERIFY(privatelyReads(*eve, u"fay"_s, u"fay has Quit IRC"_s));
        fay->field("Text1")->setReadOnly(false);
        fay->signIn(u"fay"_s);
        QVERIFY(isThere(*eve, u"fay"_s));
        QVERIFY(!talkWith(*fay, u"eve"_s)); // a new connection begins without conversations
        say(*eves, u"there again"_s);
        QTRY_VERIFY(privatelyReads(*fay, u"eve"_s, u"there again"_s));
    }

    // They come, speak, change their name and go, each line in a packet of its own.
    void shortVisits()
    {
        constexpr int count = 40;
        const auto client = clientInRoom(u"gus"_s);
        std::vector<std::unique_ptr<Peer>> guests;
        for (int i = 0; i < count; ++i)
            guests.push_back(std::make_unique<Peer>(m_host, "guest" + QByteArray::number(i)));
        for (const auto& guest : guests)
            QVERIFY(guest->hears(" 001 "));
        QTimer timer;
        int said = 0;
        connect(&timer, &QTimer::timeout, this, [&] {
            const QByteArray number = QByteArray::number(said / 4);
            const QByteArray lines[]{"JOIN #Harbor", "PRIVMSG #Harbor :hello" + number,
                                     "NICK was" + number, "PART #Harbor"};
            guests[static_cast<std::size_t>(said / 4)]->send(lines[said % 4]);
            if (++said == 4 * count)
                timer.stop();
        });
        timer.start(1);
        QTRY_COMPARE(client->conversation().count(u" has left #Harbor"_s), count);
        QTRY_COMPARE(client->chatters(), QStringList{u"gus"_s});
        QCOMPARE(client->window().findChild<QLabel*>(u"cmdCount"_s)->text(),
                 u" Total Chatters : [ 1 ]"_s);
        const QString heard = client->conversation();
        for (int i = 1; i < count; ++i)
            QVERIFY(heard.indexOf(u"hello%1 "_s.arg(i)) > heard.indexOf(u"hello%1 "_s.arg(i - 1)));
    }

    void ownsTheRoom()
    {
        Peer moe(m_host, "moe");
        moe.enter("#Harbor");
        const auto client = newClient();
        client->signIn(u"harbormaster"_s, u"lighthouse"_s);
        // The services give the rank while the entry is still being handled.
        QVERIFY2(isThere(*client, u"@harbormaster"_s), qPrintable(client->conversation()));
        QVERIFY(
            client->conversation().trimmed().startsWith("You have entered to the chat room"_L1));
        const NickList& nicks = client->chatRoom().main.room.nicks;
        struct Rank
        {
            const char* entry;
            QByteArray letter;
            QString row;
            bool (NickList::*holds)(const QString&) const;
        };
        for (const Rank& rank : {Rank{"mnu_nicks_op", "o", u"@moe"_s, &NickList::isOp},
                                 Rank{"mnu_nicks_halfop", "h", u"moe"_s,
                                      &NickList::isHalfOp}, // has no sign in the list
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

        QWidget* topic = client->window().findChild<QWidget*>(u"rtbTopic"_s);
        QTest::keyClick(topic, Qt::Key_Home);
        QTest::keyClicks(topic, u"Ahoy "_s);
        QTest::keyClick(topic, Qt::Key_Return);
        QVERIFY(moe.hears("TOPIC #Harbor :Ahoy  Welcome to Quill Harbor"));
        QTRY_VERIFY(client->reads(u"Topic changed by harbormaster : Ahoy  Welcome"_s));

        select(*client, u"moe"_s);
        client->click("mnu_nicks_ban");
        QVERIFY(moe.hears("MODE #Harbor +b :moe!*@*"));
        client->click("mnu_chan_ban");
        QTreeWidget* bans = nullptr;
        const auto listed = [&bans] {
            for (QWidget* window : QApplication::topLevelWidgets()) {
                bans = window->isVisible() ? window->findChild<QTreeWidget*>(u"lvBans"_s) : nullptr;
                if (bans && bans->topLevelItemCount() == 1 &&
                    !bans->topLevelItem(0)->text(2).isEmpty())
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

    void pingBehindABox()
    {
        const auto client = clientInRoom(u"kay"_s);
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

    void passwordOfTheNick()
    {
        const auto client = clientInRoom(u"adam"_s);
        QTRY_VERIFY(windowTitled(passwordTitle));
        QVERIFY(!client->window().menus().bar()->isEnabled());
        answer(passwordTitle, u"guess"_s);
        QTRY_VERIFY(client->reads(u"Password incorrect."_s));
        QTRY_VERIFY(windowTitled(passwordTitle));
        answer(passwordTitle, u"adampass"_s);
        QTRY_VERIFY(client->reads(u"Password accepted - you are now recognized."_s));
        QVERIFY(!windowTitled(passwordTitle));
        QVERIFY(client->window().menus().bar()->isEnabled() &&
                client->window().nickRows().isEnabled());
        client->say(u"IRC IDENTIFY adampass"_s);
        QTRY_VERIFY(client->reads(u"You are already identified."_s));
    }

    void registration()
    {
        const auto client = clientInRoom(u"newt"_s);
        client->click("mnu_register_nickname");
        QWidget* form = windowTitled(u"NickName Registration"_s);
        QVERIFY(form);
        fillIn(form, u"Text2"_s, u"salamander"_s);
        fillIn(form, u"Text3"_s, u"newt@pond.example"_s);
        press(form, u"cmdRegister"_s);
        QTRY_VERIFY(client->reads(u"Nickname newt registered."_s));
    }

private:
    std::unique_ptr<TestClient> newClient() const
    {
        auto client = std::make_unique<TestClient>(m_host, nullptr, quietAddress());
        client->start();
        return client;
    }

    std::unique_ptr<TestClient> clientInRoom(const QString& nick) const
    {
        auto client = newClient();
        client->signIn(nick);
        if (!isThere(*client, nick))
            QTest::qFail(qPrintable(client->conversation()), __FILE__, __LINE__);
        return client;
    }

    std::unique_ptr<Peer> peerInRoom(const QByteArray& nick, const QByteArray& password = {}) const
    {
        auto peer = std::make_unique<Peer>(m_host, nick);
        peer->enter("#Harbor", password);
        return peer;
    }

    QString m_host;
};

QTEST_MAIN(NetworkTest)
#include "tst_network.moc"
