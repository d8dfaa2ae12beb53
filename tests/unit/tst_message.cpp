#include "wire/IRCMessage.h"

#include <QtTest>

using namespace Qt::StringLiterals;

class TestMessage final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void parse_data()
    {
        QTest::addColumn<QString>("line");
        // Prefix/nick/ident/host, command, parameters, all of them.
        QTest::addColumn<QString>("parts");
        const auto row = [](const char* name, const char* line, const char* parts) {
            QTest::newRow(name) << QString::fromLatin1(line) << QString::fromLatin1(parts);
        };
        row("all of it", ":n!u@h X y :hello  there\r",
            "n!u@h/n/u/h X [y|hello  there\r] y :hello  there\r");
        row("no prefix", "PING :a b", "/// PING [a b] :a b");
        row("server prefix", ":irc.example 001 me", "irc.example///irc.example 001 [me] me");
        row("no at sign", ":n!u X", "n!u/n/u/u X [] ");
        row("at sign alone", ":n@h X", "n@h///n@h X [] ");
        row("two exclamation marks", ":n!u!v@h X", "n!u!v@h/n/u!v/h X [] ");
        row("prefix alone is the command, too", ":name", "name///name name [] ");
        row("command with CR", "PING\r", "/// PING\r [] ");
        row("run of blanks", "X a  b", "/// X [a||b] a  b");
        row("blank at the end", "X a ", "/// X [a|] a ");
        row("colon inside a word", "X a:b c", "/// X [a:b|c] a:b c");
        row("colon alone", "X :", "/// X [|] :");
        row("second colon stays", "X ::)", "/// X [:)] ::)");
        row("one blank", " ", "///  [|] ");
        row("colon", ":", "///  [] ");
        row("colon and blank", ": X", "/// X [] ");
    }
    void parse()
    {
        QFETCH(QString, line);
        const IRCMessage message = ParseMessage(line);
        QStringList params;
        for (const auto& param : message.Params)
            params += param.toString();
        if (params == QStringList{QString()})
            params += QString(); // so that one empty word is not none
        QTEST(QString(message.Prefix % u'/' % message.Nick % u'/' % message.Ident % u'/' %
                      message.Host % u' ' % message.Command % " ["_L1 % params.join(u'|') %
                      "] "_L1 % message.ParamText),
              "parts");
    }

    void parameters()
    {
        const auto given = [](const char* line, int from, int to) {
            return GetParams(ParseMessage(QString::fromLatin1(line)), from, to);
        };
        QCOMPARE(given("X y :a  b\r", 1, -1), u"y a  b"_s);
        QCOMPARE(given("X a  b", 1, -1), u"a  b"_s);
        QCOMPARE(given("X y z", 2, 2), u"z"_s);
        QCOMPARE(given("X y z", 1, 1), u"y"_s);
        for (const auto& [line, from, to] :
             {std::tuple("X", 1, -1), {"X y", 1, 2}, {"X y", 2, -1}, {"X y z", 2, 1}})
            QCOMPARE(given(line, from, to), QString());
    }
};

QTEST_GUILESS_MAIN(TestMessage)
#include "tst_message.moc"
