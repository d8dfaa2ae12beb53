#include "common/BoundedArray.h"
#include "common/Conversions.h"
#include "common/TextHelpers.h"
#include "controls/Collation.h"
#include "platform/Handlers.h"
#include "wire/Windows1252.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// The number of the failure that a block raises; 0 for none.
template<typename Block>
int failureOf(Block block)
{
    try {
        block();
    } catch (const RunTimeError& error) {
        return static_cast<int>(error.number());
    }
    return 0;
}

} // namespace

// The ground that all logic stands on.
class TestText final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void splitting_data();
    void splitting();
    void splittingIntoItself();
    void cutting_data();
    void cutting();
    void numbers_data();
    void numbers();
    void wholeNumbers();
    void booleans_data();
    void booleans();
    void counterOverflows();
    void tableHasBounds();
    void padding();
    void codePage();
    void collation_data();
    void collation();
    void failureAtTheEdge();
};

void TestText::splitting_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("left");
    QTest::addColumn<QString>("right");
    QTest::addColumn<QString>("after");

    QTest::newRow("first of two") << u"a b c"_s << u"a"_s << u"b c"_s << u"b c"_s;
    QTest::newRow("none: both are all of it") << u"abc"_s << u"abc"_s << u"abc"_s << u"abc"_s;
    QTest::newRow("at the start") << u" a"_s << QString() << u"a"_s << u"a"_s;
    QTest::newRow("at the end") << u"a "_s << u"a"_s << QString() << QString();
    QTest::newRow("empty") << QString() << QString() << QString() << QString();
}

void TestText::splitting()
{
    QFETCH(QString, source);
    QString left;
    QString right;
    SplitAt(source, u' ', left, right);
    QTEST(left, "left");
    QTEST(right, "right");
    QTEST(TextBefore(source, u' '), "left");
    QTEST(TextAfter(source, u' '), "after");
}

void TestText::splittingIntoItself()
{
    QString rest = u"a b c"_s;
    QString word;
    SplitAt(rest, u' ', word, rest);
    QCOMPARE(word + u'/' + rest, u"a/b c"_s);
    QString host = u"n!u"_s;
    SplitAt(host, u'!', host, word);
    QCOMPARE(host + u'/' + word, u"n/u"_s);
}

void TestText::cutting_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<QString>("left");
    QTest::addColumn<QString>("right");

    QTest::newRow("0") << 0 << u"abc"_s << u"abc"_s;
    QTest::newRow("2") << 2 << u"c"_s << u"a"_s;
    QTest::newRow("all") << 3 << QString() << QString();
    QTest::newRow("more than there is") << 4 << QString() << QString();
}

void TestText::cutting()
{
    QFETCH(int, count);
    QTEST(CutLeft(u"abc"_s, count), "left");
    QTEST(CutRight(u"abc"_s, count), "right");
}

void TestText::numbers_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("number16");
    QTest::addColumn<int>("failure16");
    QTest::addColumn<int>("failure32");

    QTest::newRow("plain") << u"50"_s << 50 << 0 << 0;
    QTest::newRow("negative, blanks") << u" -7 "_s << -7 << 0 << 0;
    QTest::newRow("padded") << (u"30"_s + QString(253, QChar(u'\0'))) << 30 << 0 << 0;
    QTest::newRow("largest") << u"32767"_s << 32767 << 0 << 0;
    QTest::newRow("too large for 16 bits") << u"32768"_s << 0 << 6 << 0;
    QTest::newRow("too large for 32 bits") << u"9999999999"_s << 0 << 6 << 6;
    QTest::newRow("endless") << QString(400, u'9') << 0 << 6 << 6;
    QTest::newRow("word") << u"many"_s << 0 << 13 << 13;
    QTest::newRow("sign alone") << u"-"_s << 0 << 13 << 13;
    QTest::newRow("empty") << QString() << 0 << 13 << 13;
    QTest::newRow("number in front") << u"7up"_s << 7 << 0 << 0;
}

void TestText::numbers()
{
    QFETCH(QString, text);
    int number = 0;
    QTEST(failureOf([&] { number = toInt16(text); }), "failure16");
    QTEST(number, "number16");
    QTEST(failureOf([&] { number = toInt32(text); }), "failure32");
}

void TestText::wholeNumbers()
{
    QCOMPARE(int(wholeInt16(u"-12"_s)), -12);
    QCOMPARE(failureOf([] { wholeInt16(u"40000"_s); }), 6);
    for (const QString& text : {u"2cool"_s, u"7 "_s, u" 7"_s, u"1.5"_s, u"-"_s, QString()})
        QCOMPARE(failureOf([&] { wholeInt16(text); }), 13);
}

void TestText::booleans_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("value");
    QTest::addColumn<int>("failure");

    QTest::newRow("lower") << u"true"_s << true << 0;
    QTest::newRow("as stored") << u"True"_s << true << 0;
    QTest::newRow("false") << u"FALSE"_s << false << 0;
    QTest::newRow("padded") << (u"true"_s + QString(251, QChar(u'\0'))) << true << 0;
    QTest::newRow("number") << u"-1"_s << true << 0;
    QTest::newRow("zero") << u"0"_s << false << 0;
    QTest::newRow("neither") << u"yes"_s << false << 13;
}

void TestText::booleans()
{
    QFETCH(QString, text);
    bool value = false;
    QTEST(failureOf([&] { value = toBoolean(text); }), "failure");
    QTEST(value, "value");
}

void TestText::counterOverflows()
{
    Int16 counter(32767);
    QCOMPARE(failureOf([&] { ++counter; }), 6);
    QCOMPARE(int(counter), 32767);
    counter = -32768;
    QCOMPARE(failureOf([&] { --counter; }), 6);
    QCOMPARE(int(counter), -32768);
}

void TestText::tableHasBounds()
{
    BoundedArray<int, 1, 30> table;
    table(1) = 7;
    table(30) = 8;
    QCOMPARE(table(1) + table(30), 15);
    QCOMPARE(failureOf([&] { table(0) = 1; }), 9);
    QCOMPARE(failureOf([&] { table(31) = 1; }), 9);
}

void TestText::padding()
{
    QCOMPARE(beforeNul(u"a b"_s + QString(252, QChar(u'\0'))), u"a b"_s);
    QCOMPARE(trimBlanks(u"  \ta\0 "_s), u"\ta\0"_s);
    QCOMPARE(trimBlanks(u"   "_s), QString());
}

void TestText::codePage()
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

void TestText::collation_data()
{
    QTest::addColumn<QString>("lower");
    QTest::addColumn<QString>("higher");

    QTest::newRow("letters") << u"alice"_s << u"Bob"_s;
    QTest::newRow("case ignored") << u"ALICE"_s << u"bob"_s;
    QTest::newRow("operator first") << u"@zed"_s << u"alice"_s;
    QTest::newRow("voice first") << u"+zed"_s << u"1alice"_s;
    QTest::newRow("digits before letters") << u"9"_s << u"a"_s;
    QTest::newRow("underscore before letters") << u"_zed"_s << u"alice"_s;
    QTest::newRow("shorter first") << u"bob"_s << u"bob2"_s;
}

void TestText::collation()
{
    QFETCH(QString, lower);
    QFETCH(QString, higher);
    QVERIFY(collate(lower, higher) < 0);
    QVERIFY(collate(higher, lower) > 0);
    QCOMPARE(collate(lower.toUpper(), lower.toLower()), 0);
}

void TestText::failureAtTheEdge()
{
    QStringList log;
    const Handlers handlers([&](const QString& message) { log += message; });
    handlers.run([] { throw RunTimeError(RunTimeError::Number::TypeMismatch); });
    QCOMPARE(log, QStringList{u"Run-time error '13':\n\nType mismatch"_s});

    const auto fail = [] { throw RunTimeError(RunTimeError::Number::Overflow); };
    log.clear();
    resumeNext([&] { log += u"first"_s; }, fail, [&] { log += u"third"_s; });
    skipRest([&] {
        fail();
        log += u"never"_s;
    });
    QCOMPARE(log, (QStringList{u"first"_s, u"third"_s}));
}

QTEST_GUILESS_MAIN(TestText)
#include "tst_text.moc"
