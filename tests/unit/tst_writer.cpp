#include "common/RunTimeError.h"
#include "support/RecordingDesk.h"
#include "text/ColorTables.h"
#include "text/IncomingText.h"
#include "text/Mentions.h"
#include "wire/LineSink.h"

#include <QTest>

using namespace Qt::StringLiterals;

// Lines of chat text becoming runs of formatted text.
namespace {

constexpr auto lineEnd = "\r\n"_L1;

QString runsOf(const QString& markup, bool raw)
{
    const RecordingDesk desk;
    MemoryView view;
    if (raw)
        TextWriter::WriteRaw(view, RecordingDesk::coded(markup));
    else
        desk.writer.WriteView(view, RecordingDesk::coded(markup));
    // Of the styles of the line end only one matters: it is never bold.
    QString runs = view.runs();
    if (!runs.endsWith(lineEnd))
        return runs + "(no line end)"_L1;
    if (view.styleAt(view.TextLength() - 1).bold)
        return runs + "(bold line end)"_L1;
    runs.chop(2);
    return runs.endsWith(u'>') ? runs.left(runs.lastIndexOf(u'<')) : runs;
}

} // namespace

class TestWriter final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lines_data()
    {
        QTest::addColumn<QString>("markup");
        QTest::addColumn<QString>("view");
        QTest::addColumn<QString>("raw");

        const auto row = [](const char* name, const char* markup, const char* view,
                            const char* raw = nullptr) {
            QTest::newRow(name) << QString::fromLatin1(markup) << QString::fromLatin1(view)
                                << QString::fromLatin1(raw ? raw : view);
        };
        row("plain", "hello", "<000000>hello ");
        row("empty", "", "<000000> ");
        row("third digit is text", "{C}123", "<0000ff>3 ");
        row("background is read over", "{C}4,5word", "<ff0000>word ");
        row("comma without background", "{C}4,word", "<ff0000>word ");
        row("two-digit background", "{C}12,345", "<0000ff>5 ");
        row("comma first", "{C}4a{C},5word", "<ff0000>a<000000>,5word ");
        row("second comma is text", "{C}4,5,6", "<ff0000>,6 ");
        row("no number is black", "{C}4a{C}b", "<ff0000>a<000000>b ");
        row("styles behind a colour", "{C}4{B}a{B}b", "<ff0000 b>a<ff0000>b ");
        row("number split by a style", "{C}1{B}2", "<000000 b>2 ");
        row("ends in a colour", "a{C}4", "<000000>a", "<000000>a<ff0000> ");
        row("ends in a colour without number", "{C}4a{C}", "<ff0000>a", "<ff0000>a<000000> ");
        row("ends in a colour with background", "a{C}4,12", "<000000>a", "<000000>a<ff0000> ");
        row("ends in a comma that is text", "a{C},", "<000000>a, ");
        row("bold word", "a{B}b{B}c", "<000000>a<000000 b>b<000000>c ");
        row("underline and strike", "{U}a{R}b{U}c{R}d",
            "<000000 u>a<000000 u s>b<000000 s>c<000000>d ");
        row("character 15 alone is plain text", "a{O}b", "<000000>a\17b ");
        row("character 15 is bold in a coded line", "{C}4a{O}b{U}c{O}d",
            "<ff0000>a<ff0000 b>b<ff0000 b u>c<ff0000 u>d ", "<ff0000>a\17b<ff0000 u>c\17d ");
        row("character 15 ends bold", "{B}a{O}b", "<000000 b>a<000000>b ", "<000000 b>a\17b ");
        row("action character is text", "{A}a", "<000000>\1a ");
        row("code 0 cuts its run alone", "{B}a{0}b{B}c", "<000000 b>a<000000>c ");
    }

    void lines()
    {
        QFETCH(QString, markup);
        QTEST(runsOf(markup, false), "view");
        QTEST(runsOf(markup, true), "raw");
    }

    void nothingIsCarriedOver()
    {
        const RecordingDesk desk;
        MemoryView view;
        desk.writer.WriteView(view, RecordingDesk::coded(u"{C}4{B}{U}{R}loud"_s));
        const qsizetype second = view.TextLength();
        desk.writer.WriteView(view, u"calm"_s);
        QCOMPARE(view.runs(second), u"<000000>calm \r\n"_s);
        // Of a plain line with code 0 nothing behind it is inserted, not even the line end.
        const qsizetype third = view.TextLength();
        desk.writer.WriteView(view, RecordingDesk::coded(u"a{0}b"_s));
        desk.writer.WriteView(view, u"c"_s);
        QCOMPARE(view.Text().mid(third), u"ac \r\n"_s);
    }

    void font()
    {
        RecordingDesk desk;
        MemoryView view;
        desk.variables.FontName = u"Courier"_s + QString(248, QChar(u'\0'));
        desk.variables.FontSize = 14;
        desk.writer.WriteView(view, u"a"_s);
        QCOMPARE(view.styleAt(0).fontName, u"Courier"_s);
        QCOMPARE(view.styleAt(0).fontSize, 14);
        desk.variables.FontSize = 20; // only lines to come
        TextWriter::WriteRaw(view, u"b"_s);
        QCOMPARE(view.styleAt(4).fontSize, 14);
        desk.writer.WriteView(view, RecordingDesk::coded(u"{B}c"_s));
        QCOMPARE(view.styleAt(8).fontSize, 20);
    }

    void selectionIsNotLeftWhereAReaderPutIt()
    {
        const RecordingDesk desk;
        MemoryView view;
        desk.writer.WriteView(view, u"first"_s);
        // Somebody else moves the selection at every change, as the picture pass does.
        view.onChange([&] { view.setSelStart(1); });
        desk.writer.WriteView(view, RecordingDesk::coded(u"a{B}b{B}c"_s));
        desk.writer.WriteView(view, u"last"_s);
        QCOMPARE(view.Text(), u"first \r\nabc \r\nlast \r\n"_s);
    }

    void length()
    {
        const RecordingDesk desk;
        MemoryView view;
        const QString longest = u'\2' + QString(32765, u'x'); // of coded lines; a blank follows
        QVERIFY_THROWS_EXCEPTION(RunTimeError, desk.writer.WriteView(view, longest + u'x'));
        QCOMPARE(view.TextLength(), 0);
        desk.writer.WriteView(view, longest);
        QCOMPARE(view.TextLength(), 32768);
        desk.writer.WriteView(view, QString(40000, u'x'));
        QCOMPARE(view.TextLength(), 32768 + 40003);
    }

    void colors()
    {
        constexpr std::array<QRgb, 16> wanted{
            0xffffff, 0x000000, 0x00007f, 0x007f00, 0xff0000, 0x7f0000, 0x7f007f, 0xff7f00,
            0xffff00, 0x00ff00, 0x000000, 0x00ffff, 0x0000ff, 0xff00ff, 0x5c5c5c, 0xb8b8b8};
        for (int number = 0; number <= 15; ++number) {
            QCOMPARE(ColorToRGB(number) & 0xffffff, wanted[std::size_t(number)]);
            // The hole of the table; only the way back knows a colour for it.
            QCOMPARE(RGBToColor(ColorToRGB(number)), number == 10 ? 1 : number);
        }
        for (const int number : {-32768, -1, 10, 16, 99, 32767})
            QCOMPARE(ColorToRGB(number), qRgb(0, 0, 0));
        QCOMPARE(RGBToColor(qRgb(0, 148, 144)), 10);
        QCOMPARE(RGBToColor(qRgb(1, 2, 3)), 0);
        // A lone comma is none, and neither is anything with three digits in a row.
        for (const char* text :
             {"", "1", "12", "1,2", "12,3", "1,23", "1,", "12,", "12,34", ",1", ",12"})
            QVERIFY2(IsColorSpec(QString::fromLatin1(text)), text);
        for (const char* text :
             {",", "123", "1,,", "1,234", "1a", "1 ", " 1", ",123", "12,3a", "-1"})
            QVERIFY2(!IsColorSpec(QString::fromLatin1(text)), text);
        QCOMPARE(inputColorOf(u"10"_s), qRgb(0, 99, 99)); // the palette has values of its own
        QCOMPARE(inputColorOf(u"rainbow"_s), qRgb(0, 0, 0));
        QVERIFY(!inputColorOf(u"16"_s));
    }

    void incoming_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("room");
        QTest::addColumn<QString>("privately");

        const auto row = [](const char* name, const QString& text, const QString& room,
                            const QString& privately) {
            QTest::newRow(name) << text << room << privately;
        };
        row("line, without blanks at its end", u"hi  "_s, u"V| {C}12<bob> hi"_s,
            u"V| {C}12<bob>{C} hi"_s);
        row("version", u"{A}VERSION{A} and more"_s,
            u"<< CTCPREPLY bob VERSION :Quill Harbor Messengr for Windows OS"_s,
            u"<< CTCPREPLY bob VERSION :Tarnwyk Messenger for Windows9x"_s);
        row("lower case is no request", u"{A}version{A}"_s, u"V| {C}12<bob> {A}version{A}"_s,
            u"V| {C}12<bob>{C} {A}version{A}"_s);
        const QString waves = u"V| {C}06bob waves"_s;
        row("action", u"{A}ACTION waves{A}"_s, waves, waves);
        row("action without its end loses a letter", u"{A}ACTION waves"_s, waves.chopped(1),
            waves.chopped(1));
    }

    void incoming()
    {
        QFETCH(QString, text);
        RecordingDesk desk;
        desk.sock.setState(Winsock::Connected);
        const auto entries = [&](const IncomingText::Manner& manner) {
            RecordingView view(u"V"_s, desk.journal);
            IncomingText(manner, desk.writer, desk.connection)
                .PutText(view.view, u"bob"_s, RecordingDesk::coded(text));
            return desk.take();
        };
        QFETCH(QString, room);
        QFETCH(QString, privately);
        QCOMPARE(entries(IncomingText::room), RecordingDesk::expected({room}));
        QCOMPARE(entries(IncomingText::privateTalk), RecordingDesk::expected({privately}));
    }

    void statusTriesTwice()
    {
        RecordingDesk desk;
        int changes = 0;
        desk.channel.dataIn.view.onChange([&] {
            if (++changes == 1)
                throw RunTimeError(RunTimeError::Number::Overflow);
        });
        desk.status.WriteStatus(u"note"_s, 6);
        QVERIFY(desk.channel.dataIn.view.Text().endsWith("note \r\n"_L1));
        desk.status.WriteStatus(QString(40000, u'x'), 6); // fails both times, and that is all
        QVERIFY(desk.channel.dataIn.view.TextLength() < 40000);
    }

    void mentions()
    {
        const auto namesMe = [](const QString& markup) {
            return namesNick(RecordingDesk::coded(markup), u"me"_s);
        };
        for (const QString& line :
             {u"Me"_s, u"well, ME: see"_s, u"[me]"_s, u"{C}4,12me"_s, u"some of me"_s})
            QVERIFY2(namesMe(line), qPrintable(line));
        for (const QString& line :
             {u"some time"_s, u"me-too me_ me|away"_s, u"12me"_s, u"m\u00e9 me\u0301"_s, QString()})
            QVERIFY2(!namesMe(line), qPrintable(line));
        QVERIFY(!namesNick(u"me"_s, QString()));
    }
};

QTEST_GUILESS_MAIN(TestWriter)
#include "tst_writer.moc"
