#include "platform/Resources.h"
#include "support/TestAuthority.h"
#include "support/TestClient.h"

using namespace Qt::StringLiterals;

namespace {

const QString manyLetters = u"Grüße, naïve, Привет, 日本語, 🙂"_s;

// What has arrived since the last call, without the ends of the lines.
QStringList linesOf(const ScriptedServer& server, qsizetype& from)
{
    const QString text = QString::fromUtf8(server.received().mid(from));
    from = server.received().size();
    return text.split(u"\r\n"_s, Qt::SkipEmptyParts);
}

void letIn(ScriptedServer& server)
{
    server.say(":s 001 alice :Welcome to the network alice!i@h\r\n:s 002 alice :Your host\r\n"
               ":s 005 alice TOPICLEN=20 AWAYLEN=40 :are supported\r\n"
               ":alice!i@h JOIN #Harbor\r\n:s 332 alice #Harbor :a topic\r\n"
               ":s 353 alice = #Harbor :@alice bob\r\n:s 366 alice #Harbor :End\r\n");
}

} // namespace

// The whole program against a server of today that says what a test wants it to say.
class WireChatTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void initTestCase()
    {
        loadResources();
        if (!m_authority.isMade())
            QSKIP("there is no openssl to make certificates with");
    }

    void privateLine()
    {
        const QString host = address(41);
        ScriptedServer server(host, 6697, m_authority.issue("IP:" + host.toLatin1()));
        TestClient client("ircs://"_L1 + host, nullptr, address(42));
        QVERIFY(
            client.around.writeSettings("[connect]\ncafile=" + m_authority.file().toUtf8() + '\n'));
        client.start();
        client.signIn(u"alice"_s, u"wonderland"_s);
        QTRY_VERIFY(server.received().contains("USER "));
        QVERIFY(client.chatRoom().session.sock.privacy().isPrivate());
        qsizetype from = 0;
        const QStringList first = linesOf(server, from);
        QCOMPARE(first.mid(0, 2), (QStringList{u"CAP LS 302"_s, u"NICK alice"_s}));
        QVERIFY2(QRegularExpression(u"^USER [A-Za-z][A-Za-z0-9]{0,7} 0 \\* :Quill Quill [^\\0]*$"_s)
                     .match(first.value(2))
                     .hasMatch(),
                 qPrintable(first.value(2)));
        server.say(":s CAP * LS :sasl=PLAIN\r\n");
        QTRY_VERIFY(server.received().endsWith("CAP REQ :sasl\r\n"));
        server.say(":s CAP alice ACK :sasl \r\n");
        QTRY_VERIFY(server.received().endsWith("AUTHENTICATE PLAIN\r\n"));
        server.say("AUTHENTICATE :+\r\n");
        QTRY_VERIFY(
            server.received().endsWith("AUTHENTICATE YWxpY2UAYWxpY2UAd29uZGVybGFuZA==\r\n"));
        server.say(
            ":s 900 alice alice!i@h alice :You are now logged in\r\n:s 903 alice :Success\r\n");
        QTRY_VERIFY(client.reads(u"* You are signed in to the account of alice."_s));
        QVERIFY(!client.reads(u"900"_s) && !client.reads(u"CAP"_s));
        letIn(server);
        QTRY_VERIFY(client.reads(u"Topic is"_s));
        QTRY_VERIFY(server.received().contains("\r\nMODE #Harbor\r\n"));
        QVERIFY(!server.received().contains("IDENTIFY"));
        client.connection().mnu_File_Disconnect_Click();
        QVERIFY(!client.chatRoom().session.sock.privacy().isPrivate());
    }

    void inClear()
    {
        const QString host = address(43);
        ScriptedServer server(host);
        TestClient client("irc://"_L1 + host, nullptr, address(44));
        client.start();
        client.signIn(u"alice"_s, u"wonderland"_s);
        QTRY_VERIFY(server.received().contains("USER "));
        letIn(server);
        QTRY_VERIFY(server.received().contains("\r\nMODE #Harbor\r\n"));
        QVERIFY(!server.received().contains('\0') && !server.received().contains("CAP"));
        QVERIFY(server.received().contains("PRIVMSG NickServ :IDENTIFY wonderland\r\n"));

        // The room, both ways, and a line that is no UTF-8.
        auto* dataOut = client.window().findChild<QLineEdit*>(u"DataOut"_s);
        dataOut->setText(manyLetters); // no keyboard has all of them
        QTest::keyClick(dataOut, Qt::Key_Return);
        const QByteArray said = "PRIVMSG #Harbor :\0031 " + manyLetters.toUtf8();
        QTRY_VERIFY(server.received().contains(said));
        server.say(":bob!b@h PRIVMSG #Harbor :" + manyLetters.toUtf8() +
                   "\r\n:bob!b@h PRIVMSG #Harbor :caf\xE9\r\n");
        QTRY_VERIFY(client.reads(u"café"_s));
        QCOMPARE(client.conversation().count(manyLetters), 2);

        // A private line keeps its words, its colon and its length.
        server.say(":bob!b@h PRIVMSG alice :five words of " + manyLetters.toUtf8() + "\r\n");
        QTRY_VERIFY(shown<QueryForm>());
        QueryForm& talk = *shown<QueryForm>();
        QCOMPARE(talk.windowTitle(), u"bob"_s);
        QTRY_VERIFY(talk.DataIn().Text().contains(manyLetters));
        qsizetype from = server.received().size();
        const QString spoken = u":) "_s + u"many words "_s.repeated(90);
        talk.DataOut().setText(spoken);
        QTest::keyClick(&talk.DataOut(), Qt::Key_Return);
        QString put;
        const auto isWhole = [&] {
            for (const QString& line : linesOf(server, from)) {
                if (line.startsWith("PRIVMSG bob :"_L1) && line.size() <= 500)
                    put += line.mid(line.indexOf(u'1') + (put.isEmpty() ? 2 : 1));
            }
            return put.size() >= spoken.size();
        };
        QTRY_VERIFY_WITH_TIMEOUT(isWhole(), 30'000);
        QCOMPARE(put, spoken);

        // What the server does not take of a topic comes back by the arrow key.
        client.connection().SendData(u"TOPIC #Harbor :one topic of more than twenty"_s);
        QTRY_VERIFY_WITH_TIMEOUT(
            server.received().endsWith("TOPIC #Harbor :one topic of more th\r\n"), 30'000);
        QVERIFY(
            client.reads(u"* The server takes no more of this TOPIC. Left off, and kept for the "
                         "arrow keys: an twenty"_s));
        QTest::keyClick(dataOut, Qt::Key_Up);
        QCOMPARE(dataOut->text(), u"an twenty"_s);
    }

    void notPrivateIsNotConnected()
    {
        const QString host = address(45);
        const ScriptedServer server(host, 6697, m_authority.issue("DNS:irc.other"));
        TestClient client("ircs://"_L1 + host, nullptr, address(46));
        QVERIFY(
            client.around.writeSettings("[connect]\ncafile=" + m_authority.file().toUtf8() + '\n'));
        client.start();
        client.signIn(u"alice"_s, u"wonderland"_s);
        QTRY_VERIFY(client.reads(u"for irc.other, not for "_s + host));
        QVERIFY(client.connection().isWaitingToRetry());
        QVERIFY(client.looksSignedOut());
        QCOMPARE(server.received(), QByteArray());
    }

private:
    static QString address(int n) { return TestSurroundings::ownAddress(n); }

    TestAuthority m_authority;
};

QTEST_MAIN(WireChatTest)
#include "tst_wirechat.moc"
