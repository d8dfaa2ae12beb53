#include "support/StandIns.h"
#include "wire/StandardLines.h"
#include "wire/TextPieces.h"

#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

// What stands between a session and a server of today, with a clock that a test moves.
struct Edge
{
    // Welcomed, in a room, and seen by others as me!ident@host.
    Edge()
    {
        begin();
        hear(u":s 001 me :Welcome"_s);
        hear(u":me!ident@host JOIN :#room"_s);
        take();
    }
    void begin(const QString& password = {}) { lines.begin({u"me"_s, password}, Charset()); }
    std::optional<QString> hear(const QString& line) { return lines.receive(line + u'\r'); }
    // All that waits has its time.
    void settle()
    {
        for (qsizetype before = -1; before != sent.size();) {
            before = sent.size();
            now += 600'000;
            lines.turn();
        }
    }
    QStringList take() { return std::exchange(sent, {}); }
    // Plays a talk and says where it went another way, or nothing: "= " of the session, "< " of
    // the server and "! " of it for the session, too; then what goes out, "> ", what the person
    // is told, "+ ", "- " or "? ", and what is given back, "k ".
    QString play(const QString& talk)
    {
        QStringList went;
        for (const QString& line : talk.split(u'\n')) {
            if (line.startsWith(u'<') || line.startsWith(u'!'))
                went += (hear(u':' + line.mid(2)) ? u'!' : u'<') + line.mid(1);
            else if (line.startsWith(u'='))
                lines.send((went += line).last().mid(2));
            for (const QString& out : take())
                went += "> "_L1 + out;
            went += std::exchange(told, {});
        }
        return difference(went, talk);
    }

    qint64 now = 0;
    QStringList sent;
    QStringList told;
    StandardLines lines{{
        .write =
            [this](const QByteArray& bytes) {
                sent += bytes.endsWith("\r\n") && bytes.count('\n') == 1
                            ? QString::fromUtf8(bytes).chopped(2)
                            : u"without its end: "_s + QString::fromUtf8(bytes);
            },
        .now = [this] { return now; },
        .tell = [this](const QString& text,
                       bool good) { told += (good ? u"+ "_s : u"- "_s) + text; },
        .warn = [this](const QString& text) { told += u"! "_s + text; },
        .keep = [this](const QString& text) { told += u"k "_s + text; },
    }};
};

// A text as a reader sees it: each character with the style in force.
QStringList seen(const QString& text)
{
    static const QRegularExpression unit(
        u"\x03(?:(\\d{1,2})(?:,(\\d{1,2}))?)?|\x04(?:([0-9a-fA-F]{6})(?:,([0-9a-fA-F]{6}))?)?|"
        "[\x02\x0f\x11\x16\x1d\x1e\x1f]|[\\s\\S]"_s);
    QStringList characters;
    QMap<QChar, bool> on;
    QString front;
    QString back;
    for (const QRegularExpressionMatch& match : unit.globalMatch(text)) {
        const QString what = match.captured();
        const QChar code = what.front();
        if (code == u'\x03' || code == u'\x04') {
            const int group = code == u'\x03' ? 1 : 3;
            const auto number = [&](int n) {
                return code == u'\x03' ? match.captured(n).rightJustified(2, u'0')
                                       : match.captured(n);
            };
            if (!match.hasCaptured(group))
                back.clear();
            front = match.hasCaptured(group) ? number(group) : QString();
            if (match.hasCaptured(group + 1))
                back = number(group + 1);
        } else if (code == u'\x0f') {
            on.clear();
            front.clear();
            back.clear();
        } else if (u"\x02\x11\x16\x1d\x1e\x1f"_s.contains(code)) {
            on[code] = !on[code];
        } else {
            QString styles;
            for (auto it = on.cbegin(); it != on.cend(); ++it)
                styles += it.value() ? QString::number(it.key().unicode()) + u' ' : QString();
            characters += what + u'/' + styles + front + u',' + back;
        }
    }
    return characters;
}

} // namespace

class TestWireLines final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void talks_data()
    {
        QTest::addColumn<QString>("talk"); // for Edge::play()
        QTest::addColumn<QString>("password");

        const auto row = [](const char* name, const QString& talk, const QString& password = {}) {
            QTest::newRow(name) << talk << password;
        };
        const auto form = [&](const QString& house, const QString& today) {
            row(qPrintable(house), "= "_L1 + house + "\n> "_L1 + today);
        };
        row("no nick", u"= NICK "_s);
        row("nothing", u"= "_s);
        form(u"USER PC1Client-User:Quill A\0\0\0"_s, u"USER PC1Clien 0 * :Quill A"_s);
        form(u"USER 9pc_ä.bClient-User:Quill"_s, u"USER pcbClien 0 * Quill"_s);
        form(u"USER 12-:"_s, u"USER quill 0 * :"_s);
        form(u"JOIN #room\0\0\0"_s, u"JOIN #room"_s);
        form(u"PRIVMSG bob \0031 five words of a line"_s,
             u"PRIVMSG bob :\0031 five words of a line"_s);
        form(u"PRIVMSG bob \0031 :)"_s, u"PRIVMSG bob :\0031 :)"_s);
        form(u"AWAY :) gone"_s, u"AWAY ::) gone"_s);
        form(u"AWAY "_s, u"AWAY"_s);
        form(u"QUIT :bye\0\0"_s, u"QUIT bye"_s);
        form(u"IDENTIFY pass"_s, u"PRIVMSG NickServ :IDENTIFY pass"_s);
        form(u"IDENTIFY :pass"_s, u"PRIVMSG NickServ :IDENTIFY :pass"_s);
        form(u"CTCPREPLY bob VERSION :Some Client"_s, u"NOTICE bob :\001VERSION Some Client\001"_s);
        for (const QString& line :
             {u"NICK me"_s, u"JOIN #room key"_s, u"PRIVMSG #room ::) yes"_s,
              u"PRIVMSG #room :  two  blanks "_s, u"PRIVMSG bob :"_s, u"PRIVMSG bob"_s,
              u"TOPIC #room :a new topic"_s, u"TOPIC #room :"_s, u"TOPIC #room"_s,
              u"KICK #room bob :too loud"_s, u"PART #room :see you"_s, u"MODE #room +b *!*@*"_s,
              u"MODE me +i"_s, u"NOTICE bob :\001PING 12\001"_s, u"XYZ one two :three four"_s})
            form(line, line);

        for (const auto& [word, service] : {std::pair(u"NICKSERV"_s, u"NickServ"_s),
                                            {u"ns"_s, u"NickServ"_s},
                                            {u"CHANSERV"_s, u"ChanServ"_s},
                                            {u"cs"_s, u"ChanServ"_s},
                                            {u"MEMOSERV"_s, u"MemoServ"_s},
                                            {u"ms"_s, u"MemoServ"_s}})
            form(word + " :DO it"_L1, "PRIVMSG "_L1 + service + " :DO it"_L1);
        for (const QString& word : {u"GHOST"_s, u"RECOVER"_s, u"RELEASE"_s})
            form(word + " me pw"_L1, "PRIVMSG NickServ :"_L1 + word + " me pw"_L1);
        form(u"ID pw"_s, u"PRIVMSG NickServ :IDENTIFY pw"_s);
        // How many words stand before the text, which may have blanks.
        for (const char* line :
             {"PRIVMSG m|", "NOTICE m|", "JOIN m|", "PART m|", "TOPIC m|", "KILL m|", "INVITE m|",
              "OPER m|", "KICK m n|", "QUIT|", "PING|", "PASS|", "WALLOPS|", "AWAY|"}) {
            const QString head = QLatin1StringView(line);
            form(QString(head).replace(u'|', " two words"_L1),
                 QString(head).replace(u'|', " :two words"_L1));
        }
        // What no line takes is given back.
        const auto cut = [&](const QString& command, const QString& fits, const QString& rest) {
            row(qPrintable("cut "_L1 + command),
                "! s 005 me TOPICLEN=40 AWAYLEN=40 KICKLEN=30 NICKLEN=x :are supported\n= "_L1 %
                    command % fits % rest % "\n> "_L1 % command % fits %
                    "\n- The server takes no more of this "_L1 % command.section(u' ', 0, 0) %
                    ". Left off, and kept for the arrow keys: "_L1 % rest % "\nk "_L1 % rest);
        };
        cut(u"TOPIC #room :"_s, u"ü "_s.repeated(13) + u"x"_s, u" rest"_s);
        cut(u"AWAY "_s, QString(39, u'a'), u"🙂"_s);
        cut(u"KICK #room bob :"_s, u"k "_s + QString(28, u'k'), u" b c"_s);
        cut(u"PART #room :"_s, u"p "_s + QString(481, u'p'), u"rest"_s); // no limit told: a line
        row("full name", "= USER PC1Client-User:A "_L1 + QString(600, u'x') +
                             "\n> USER PC1Clien 0 * :A "_L1 +
                             QString(474, u'x')); // nobody typed it
        row("fits",
            u"! s 005 me TOPICLEN=40 :are supported\n= TOPIC #room :a %1\n> TOPIC #room :a %1"_s
                .arg(QString(38, u't')));

        // One for each line of the greeting, and for each answer.
        row("identify", u"= IDENTIFY pass\n> PRIVMSG NickServ :IDENTIFY pass\n= IDENTIFY pass\n"
                        "= IDENTIFY other\n> PRIVMSG NickServ :IDENTIFY other\n"
                        "! s NOTICE me :Looking\n= IDENTIFY other\n"
                        "! NickServ!s@h NOTICE me :Password incorrect.\n= IDENTIFY other\n"
                        "> PRIVMSG NickServ :IDENTIFY other\n! s 401 me NickServ :No such nick\n"
                        "= IDENTIFY other\n> PRIVMSG NickServ :IDENTIFY other"_s);
        const auto sasl = [&](const char* name, const QString& talk, bool isSignedIn = false) {
            row(name,
                "> CAP LS 302\n"_L1 + talk + "\n= IDENTIFY secret"_L1 +
                    (isSignedIn ? ""_L1 : "\n> PRIVMSG NickServ :IDENTIFY secret"_L1),
                u"secret"_s);
        };
        const QString asked = u"< s CAP * LS :multi-prefix sasl=EXTERNAL,PLAIN \n> CAP REQ :sasl\n"
                              "< s CAP me ACK :sasl \n> AUTHENTICATE PLAIN\n"_s;
        const QString answered = u"> AUTHENTICATE bWUAbWUAc2VjcmV0\n"_s;
        for (const QString& number : {u"903"_s, u"907"_s})
            sasl(qPrintable("right "_L1 + number),
                 asked + u"< s AUTHENTICATE :+\n"_s + answered +
                     u"< s 900 me me!i@h me :You are logged in\n< s "_s + number +
                     u" me :Success\n> CAP END\n+ You are signed in to the account of me."_s,
                 true);
        for (const QString& number : {u"902"_s, u"904"_s, u"905"_s, u"906"_s})
            sasl(qPrintable("wrong "_L1 + number),
                 asked + u"< s AUTHENTICATE +\n"_s + answered +
                     u"< s 908 me EXTERNAL :are available\n< s "_s + number +
                     u" me :Failed\n> CAP END\n- The server did not sign you in to the account "
                     "of me: Failed"_s);
        sasl("several lines", u"< s CAP * LS * :a b\n< s CAP * LS * :sasl\n< s CAP * LS :c\n"
                              "> CAP REQ :sasl\n< s CAP * NAK :sasl\n> CAP END"_s);
        sasl("without sasl", u"< s CAP * LS :multi-prefix\n> CAP END"_s);
        sasl("another way only", u"< s CAP * LS :sasl=EXTERNAL\n> CAP END"_s);
        for (const QString& number : {u"421"_s, u"451"_s})
            sasl(qPrintable("word unknown "_L1 + number),
                 "< s "_L1 + number + " * CAP :Unknown command"_L1);
        // Pieces of 400; a full one at the end says that more follows.
        for (const auto& [length, end] : {std::pair(294, u"+"_s), {297, u"eHh4"_s}})
            row(qPrintable("password of "_L1 + QString::number(length)),
                "> CAP LS 302\n"_L1 + asked + "< s AUTHENTICATE +\n> AUTHENTICATE bWUAbWUA"_L1 +
                    u"eHh4"_s.repeated(98) + "\n> AUTHENTICATE "_L1 + end,
                QString(length, u'x'));
        sasl("never answered", u"! s 001 me :Welcome\n! s 904 me :late"_s);
    }
    void talks()
    {
        QFETCH(QString, talk);
        QFETCH(QString, password);
        Edge edge;
        if (!password.isEmpty())
            edge.begin(password);
        QCOMPARE(edge.play(talk), QString());
    }

    void randomPieces()
    {
        QRandomGenerator random(5);
        QStringList units =
            u"a| |word "
            u"|ü|日本|🙂|e\u0301|👩‍👧|,|7|\002|\037|\026|\017|\003|\0034|\00312,3|"
            "\0035,|\004FF0000|  "_s.split(u'|');
        units += QString(300, u'x');
        for (int round = 0; round < 150; ++round) {
            QString text;
            for (int i = random.bounded(1, 150); i > 0; --i)
                text += units[random.bounded(units.size())];
            const int bytes = random.bounded(60, 450);
            const QStringList pieces = piecesOf(text, bytes, Charset());
            QStringList put;
            for (const QString& piece : pieces) {
                QVERIFY(piece.toUtf8().size() <= bytes);
                QVERIFY(!piece.back().isHighSurrogate());
                put += seen(piece);
            }
            QCOMPARE(put, seen(text));
        }
        QCOMPARE(piecesOf(u"one two three"_s, 8, Charset()),
                 (QStringList{u"one two"_s, u" three"_s}));
        // One character with more marks than fit is parted all the same.
        const QString marks = u'e' + QString(400, QChar(0x301));
        const QStringList parts = piecesOf(marks, 100, Charset());
        QCOMPARE(parts.join(QString()), marks);
        QVERIFY(parts.size() > 8);
    }

    void longTalk()
    {
        Edge edge;
        const QString text = u"\002\0034 "_s + u"grüße "_s.repeated(250);
        for (const auto& [head, end] : {std::pair(u"PRIVMSG #room :"_s, u""_s),
                                        {u"NOTICE bob :"_s, u""_s},
                                        {u"PRIVMSG #room :\001ACTION "_s, u"\001"_s}}) {
            edge.lines.send(head + text + end);
            edge.settle();
            QStringList put;
            for (const QString& line : edge.take()) {
                QVERIFY((":me!ident@host " + line.toUtf8()).size() <= 510);
                QVERIFY(line.startsWith(head) && line.endsWith(end));
                put += seen(line.mid(head.size()).chopped(end.size()));
            }
            QCOMPARE(put, seen(text));
        }
    }

    // With the name before it under which others see the line, it is as long as a line may be.
    void linesAreFull()
    {
        for (const auto& [line, name] :
             {std::pair("s 001 you :Welcome to it you!i@h", u"you!i@h"_s),
              {"s 396 me hidden.example :is your host", u"me!ident@hidden.example"_s},
              {"s 396 me other@hidden :is your host", u"me!other@hidden"_s},
              {"me!ident@host NICK :longername", u"longername!ident@host"_s},
              {"ME!i@elsewhere JOIN :#other", u"me!i@elsewhere"_s}}) {
            Edge edge;
            edge.hear(u':' + QLatin1StringView(line));
            edge.lines.send(u"PART #room :see "_s + QString(600, u'x'));
            const QString relayed = u':' + name + u' ' + edge.take().join(u'|');
            QCOMPARE(relayed.size(), 510);
        }
    }

    void pace()
    {
        Edge edge;
        qint64 begin = edge.now;
        QList<std::pair<qint64, qsizetype>> times; // and bytes
        for (int i = 0; i < 60; ++i)
            edge.lines.send("PRIVMSG #room :"_L1 + QString::number(i) + u' ' +
                            QString(i % 3 * 200, u'x'));
        QVERIFY(edge.sent.size() >= 4 && edge.sent.size() < 20); // a few at once, not all
        edge.hear(u"PING :s"_s);
        edge.lines.send(u"PONG :s"_s);
        QCOMPARE(edge.sent.last(), u"PONG s"_s); // whatever waits
        edge.sent.removeLast();
        for (qsizetype before = -1; edge.sent.size() < 60; edge.now += 50) {
            for (; before + 1 < edge.sent.size();)
                times += {edge.now, edge.sent[++before].size() + 2};
            QVERIFY(edge.now - begin < 600'000);
            edge.lines.turn();
        }
        for (int i = 0; i < 60; ++i) // nothing overtakes
            QVERIFY(edge.sent[i].startsWith("PRIVMSG #room :"_L1 + QString::number(i) + u' '));
        // A server that reckons 2 s and 1 s for 120 bytes is never behind by more than 24 s.
        qint64 paid = 0;
        for (const auto& [at, bytes] : times) {
            paid = std::max(paid, at) + 2000 + bytes * 1000 / 120;
            QVERIFY(paid - at <= 24'500);
        }
        // The end of the session takes with it what waits, in order.
        edge.take();
        for (int i = 0; i < 30; ++i)
            edge.lines.send("PRIVMSG #room :"_L1 + QString::number(i));
        edge.lines.send(u"QUIT :bye"_s);
        QCOMPARE(edge.sent.size(), 31);
        QCOMPARE(edge.sent.last(), u"QUIT bye"_s);
    }

    void floodOfQuestions()
    {
        Edge edge;
        for (int i = 0; i < 200; ++i)
            edge.lines.send(u"CTCPREPLY bob VERSION :Some Client"_s);
        edge.lines.send(u"PRIVMSG #room :typed in between"_s);
        edge.settle();
        QVERIFY(edge.sent.size() < 20);
        QCOMPARE(edge.sent.last(), u"PRIVMSG #room :typed in between"_s);
    }

    void ison()
    {
        Edge edge;
        QString names;
        for (int i = 0; i < 100; ++i)
            names += "nick"_L1 + QString::number(1000 + i) + u' ';
        edge.lines.send("ISON "_L1 + names);
        edge.lines.send(u"ISON bob "_s);
        const QStringList questions = edge.take();
        QCOMPARE(questions.size(), 3);
        QString put;
        for (const QString& question : questions.first(2)) {
            QVERIFY(question.size() <= 510 && question.startsWith("ISON "_L1));
            put += question.mid(5) + u' ';
        }
        QCOMPARE(put, names);
        QCOMPARE(edge.hear(u":s 303 me :nick1001 nick1002 "_s), std::nullopt);
        QCOMPARE(edge.hear(u":s 303 me :nick1099"_s), u":s 303 me :nick1001 nick1002 nick1099"_s);
        QCOMPARE(edge.hear(u":s 303 me :bob"_s), u":s 303 me :bob\r"_s);
        QCOMPARE(edge.hear(u":s 303 me :who asked"_s), u":s 303 me :who asked\r"_s);
    }

    void nothingOfAConversationStandsInTheNext()
    {
        Edge edge;
        edge.hear(u":s 005 me TOPICLEN=4 :are supported"_s);
        edge.lines.send(u"IDENTIFY pass"_s);
        edge.lines.send("ISON "_L1 + u"somebody "_s.repeated(100));
        for (int i = 0; i < 60; ++i)
            edge.lines.send(u"PRIVMSG #room :waits"_s);
        edge.begin();
        QVERIFY(!edge.lines.hasHeard());
        edge.take();
        edge.settle();
        QCOMPARE(edge.play(u"= TOPIC #room :longer\n> TOPIC #room longer\n= IDENTIFY pass\n"
                           "> PRIVMSG NickServ :IDENTIFY pass\n! s 303 me :bob"_s),
                 QString());
        edge.lines.setAnswerTime(0);
        edge.lines.send(u"NICK x"_s);
        QTRY_COMPARE(edge.told.size(), 1);
    }

    void silentNick()
    {
        Edge edge;
        edge.begin();
        edge.lines.setAnswerTime(0);
        edge.lines.send(u"NICK fünf"_s);
        QTRY_COMPARE(
            edge.told.join(u'|'),
            u"! The server has not answered to the nick \"fünf\" for 0 seconds. If it never "
            "does, sign out and try another nick."_s);
        for (const char* answer : {"001", "431", "432", "433", "436", "437"}) {
            Edge answered;
            answered.begin();
            answered.lines.setAnswerTime(0);
            answered.lines.send(u"NICK x"_s);
            answered.hear(":s "_L1 + QLatin1StringView(answer) + " me x :what it says"_L1);
            QCoreApplication::processEvents(); // its time would be over
            QCOMPARE(answered.told, QStringList());
        }
    }
};

QTEST_GUILESS_MAIN(TestWireLines)
#include "tst_wirelines.moc"
