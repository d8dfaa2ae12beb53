#include "wire/IRCMessage.h"

#include <QTest>

using namespace Qt::StringLiterals;

// Server lines taken apart.
class TestMessage final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void parse_data();
    void parse();
    void parameters_data();
    void parameters();
};

void TestMessage::parse_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("source"); // prefix, nick, ident, host
    QTest::addColumn<QString>("command");
    QTest::addColumn<QStringList>("params");
    QTest::addColumn<QString>("paramText");

    const auto row = [](const char* name, const char* line, const char* source, const char* command,
                        const QStringList& params, const char* paramText) {
        QTest::newRow(name) << QString::fromLatin1(line) << QString::fromLatin1(source)
                            << QString::fromLatin1(command) << params
                            << QString::fromLatin1(paramText);
    };
    row("all of it", ":n!u@h X y :hello  there\r", "n!u@h/n/u/h", "X",
        {u"y"_s, u"hello  there\r"_s}, "y :hello  there\r");
    row("no prefix", "PING :a b", "///", "PING", {u"a b"_s}, ":a b");
    row("server prefix", ":irc.example 001 me", "irc.example///irc.example", "001", {u"me"_s},
        "me");
    row("no at sign", ":n!u X", "n!u/n/u/u", "X", {}, "");
    row("at sign alone", ":n@h X", "n@h///n@h", "X", {}, "");
    row("two exclamation marks", ":n!u!v@h X", "n!u!v@h/n/u!v/h", "X", {}, "");
    row("prefix alone is the command, too", ":name", "name///name", "name", {}, "");
    row("full prefix alone", ":n!u@h", "n!u@h/n/u/h", "n!u@h", {}, "");
    row("command with CR", "PING\r", "///", "PING\r", {}, "");
    row("run of blanks", "X a  b", "///", "X", {u"a"_s, QString(), u"b"_s}, "a  b");
    row("two blanks behind the command", "X  b", "///", "X", {QString(), u"b"_s}, " b");
    row("blank at the end", "X a ", "///", "X", {u"a"_s, QString()}, "a ");
    row("colon inside a word", "X a:b c", "///", "X", {u"a:b"_s, u"c"_s}, "a:b c");
    row("colon alone", "X :", "///", "X", {QString()}, ":");
    row("second colon stays", "X ::)", "///", "X", {u":)"_s}, "::)");
    row("one blank", " ", "///", "", {QString()}, "");
    row("empty", "", "///", "", {}, "");
    row("colon", ":", "///", "", {}, "");
    row("colon and blank", ": X", "///", "X", {}, "");
}

void TestMessage::parse()
{
    QFETCH(QString, line);
    QFETCH(QStringList, params);
    const IRCMessage message = ParseMessage(line);
    const auto text = [](QStringView part) { return part.toString(); };
    QTEST(QStringList({text(message.Prefix), message.Nick, text(message.Ident), text(message.Host)})
              .join(u'/'),
          "source");
    QTEST(text(message.Command), "command");
    QStringList parsed;
    std::ranges::transform(message.Params, std::back_inserter(parsed), text);
    QCOMPARE(parsed, params);
    QTEST(text(message.ParamText), "paramText");
}

void TestMessage::parameters_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<QString>("expected");

    QTest::newRow("joined without CR") << u"X y :a  b\r"_s << 1 << -1 << u"y a  b"_s;
    QTest::newRow("one") << u"X y z"_s << 2 << 2 << u"z"_s;
    QTest::newRow("none there") << u"X"_s << 1 << -1 << QString();
    QTest::newRow("to above the count") << u"X y"_s << 1 << 2 << QString();
    QTest::newRow("second of one") << u"X y"_s << 2 << 2 << QString();
    QTest::newRow("from beyond the last") << u"X y"_s << 2 << -1 << QString();
    QTest::newRow("from below 1") << u"X y"_s << 0 << -1 << QString();
    QTest::newRow("empty ones between") << u"X a  b"_s << 1 << -1 << u"a  b"_s;
}

void TestMessage::parameters()
{
    QFETCH(QString, line);
    QFETCH(int, from);
    QFETCH(int, to);
    QTEST(GetParams(ParseMessage(line), from, to), "expected");
}

QTEST_GUILESS_MAIN(TestMessage)
#include "tst_message.moc"
