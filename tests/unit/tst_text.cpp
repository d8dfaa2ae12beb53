#include "common/BoundedArray.h"
#include "common/Conversions.h"
#include "common/TextHelpers.h"
#include "controls/Collation.h"
#include "platform/Handlers.h"
#include "wire/Windows1252.h"

#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

// What a block gives, or the number of the failure that it raises.
template<typename Block>
QString outcomeOf(Block block)
{
    try {
        return QString::number(block());
    } catch (const RunTimeError& error) {
        return u"error "_s + QString::number(static_cast<int>(error.number()));
    }
}

} // namespace

class TestText final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void splitting()
    {
        for (const auto& [source, parts] : {std::pair(u"a b c"_s, u"a|b c"_s),
                                            {u"abc"_s, u"abc|abc"_s},
                                            {u" a"_s, u"|a"_s},
                                            {u"a "_s, u"a|"_s},
                                            {u""_s, u"|"_s}}) {
            QString left;
            QString right;
            SplitAt(source, u' ', left, right);
            QCOMPARE(left + u'|' + right, parts);
            QCOMPARE(TextBefore(source, u' ') + u'|' + TextAfter(source, u' '), parts);
            QString rest = source; // into itself, on either side
            SplitAt(rest, u' ', left, rest);
            QCOMPARE(left + u'|' + rest, parts);
            rest = source;
            SplitAt(rest, u' ', rest, right);
            QCOMPARE(rest + u'|' + right, parts);
        }
    }

    void numbers_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("number16");
        QTest::addColumn<QString>("number32"); // if it is another
        QTest::addColumn<QString>("whole");    // 16 bits

        const QString overflow = u"error 6"_s;
        const QString mismatch = u"error 13"_s;
        const auto row = [](const char* name, const QString& text, const QString& number16,
                            const QString& number32, const QString& whole) {
            QTest::newRow(name) << text << number16 << number32 << whole;
        };
        row("signs", u"-12"_s, u"-12"_s, u"-12"_s, u"-12"_s);
        row("plus", u"+7"_s, u"7"_s, u"7"_s, u"7"_s);
        row("blanks", u" -7 "_s, u"-7"_s, u"-7"_s, mismatch);
        row("padded", u"30\0\0"_s, u"30"_s, u"30"_s, mismatch);
        row("largest", u"32767"_s, u"32767"_s, u"32767"_s, u"32767"_s);
        row("smallest", u"-32768"_s, u"-32768"_s, u"-32768"_s, u"-32768"_s);
        row("too large for 16 bits", u"32768"_s, overflow, u"32768"_s, overflow);
        row("too large for 32 bits", u"9999999999"_s, overflow, overflow, overflow);
        row("endless", QString(400, u'9'), overflow, overflow, overflow);
        row("halves go to the even neighbour", u"2.5"_s, u"2"_s, u"2"_s, mismatch);
        row("second point ends it", u"1.5.9"_s, u"2"_s, u"2"_s, mismatch);
        row("second sign ends it", u"7-8"_s, u"7"_s, u"7"_s, mismatch);
        row("word", u"many"_s, mismatch, mismatch, mismatch);
        row("empty", QString(), mismatch, mismatch, mismatch);
        row("number in front", u"7up"_s, u"7"_s, u"7"_s, mismatch);
    }
    void numbers()
    {
        QFETCH(QString, text);
        QTEST(outcomeOf([&] { return int(toInt16(text)); }), "number16");
        QTEST(outcomeOf([&] { return toInt32(text); }), "number32");
        QTEST(outcomeOf([&] { return int(wholeInt16(text)); }), "whole");
    }

    void booleans()
    {
        for (const auto& [text, value] : {std::pair(u"true"_s, u"1"_s),
                                          {u"True"_s, u"1"_s},
                                          {u"FALSE"_s, u"0"_s},
                                          {u" true \0\0"_s, u"1"_s},
                                          {u"-1"_s, u"1"_s},
                                          {u"0"_s, u"0"_s},
                                          {u"yes"_s, u"error 13"_s}})
            QCOMPARE(outcomeOf([&] { return int(toBoolean(text)); }), value);
        QCOMPARE(booleanWord(true) + booleanWord(false), u"TrueFalse"_s);
    }

    void bounds()
    {
        Int16 counter(32767);
        QCOMPARE(outcomeOf([&] { return int(++counter); }), u"error 6"_s);
        QCOMPARE(int(counter), 32767);
        counter = -32768;
        QCOMPARE(outcomeOf([&] { return int(--counter); }), u"error 6"_s);
        QCOMPARE(int(counter), -32768);
        BoundedArray<int, 1, 30> table;
        table(1) = 7;
        table(30) = 8;
        QCOMPARE(table(1) + table(30), 15);
        for (const int outside : {0, 31})
            QCOMPARE(outcomeOf([&] { return table(outside); }), u"error 9"_s);
    }

    void padding()
    {
        QCOMPARE(beforeNul(u"a b\0\0"_s), u"a b"_s);
        QCOMPARE(trimBlanks(u"  \ta\0 "_s), u"\ta\0"_s);
        QCOMPARE(trimBlanks(u"   "_s), QString());
        QCOMPARE(withLineFeeds(u"a\r\nb\rc\n\rd"_s), u"a\nb\nc\n\nd"_s);
    }

    void codePage()
    {
        QByteArray all;
        for (int byte = 0; byte < 256; ++byte)
            all += static_cast<char>(byte);
        const QString text = fromWindows1252(all);
        QCOMPARE(text.size(), 256);
        QCOMPARE(text[0x80], QChar(0x20AC));
        QCOMPARE(text[0x81], QChar(0x0081)); // undefined in the code page, kept all the same
        QCOMPARE(text[0xE9], QChar(0x00E9));
        QCOMPARE(toWindows1252(text), all);
        QCOMPARE(toWindows1252(u"a\u0416\u0080b"_s), "a??b"_ba);
    }

    // Signs stand before digits, these before letters, whatever the case.
    void collation()
    {
        const QStringList sorted{u"+zed"_s, u"@zed"_s,  u"_zed"_s, u"1alice"_s, u"9"_s,
                                 u"a"_s,    u"alice"_s, u"Bob"_s,  u"bob2"_s};
        for (int i = 0; i + 1 < sorted.size(); ++i) {
            QVERIFY2(collate(sorted[i], sorted[i + 1]) < 0, qPrintable(sorted[i]));
            QVERIFY2(collate(sorted[i + 1], sorted[i]) > 0, qPrintable(sorted[i]));
            QCOMPARE(collate(sorted[i].toUpper(), sorted[i].toLower()), 0);
        }
    }

    void failureAtTheEdge()
    {
        QStringList log;
        const Handlers handlers([&](const QString& message) { log += message; });
        handlers.run([] { throw RunTimeError(RunTimeError::Number::TypeMismatch); });
        handlers.run([] { throw std::runtime_error("another"); });
        QCOMPARE(log, (QStringList{u"Run-time error '13':\n\nType mismatch"_s, u"another"_s}));

        const auto fail = [] { throw RunTimeError(RunTimeError::Number::Overflow); };
        log.clear();
        resumeNext([&] { log += u"first"_s; }, fail, [&] { log += u"third"_s; });
        skipRest([&] {
            fail();
            log += u"never"_s;
        });
        QCOMPARE(log, (QStringList{u"first"_s, u"third"_s}));
    }
};

QTEST_GUILESS_MAIN(TestText)
#include "tst_text.moc"
