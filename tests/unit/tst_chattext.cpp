#include "view/ChatText.h"
#include "view/LineHeights.h"
#include "view/TextSearch.h"

#include <QTest>

#include <random>

using namespace Qt::StringLiterals;

namespace {

// One character, one pair of attributes.
struct PlainText
{
    void replace(qsizetype position, qsizetype length, const QString& inserted,
                 ChatText::Attributes look)
    {
        text.replace(position, length, inserted);
        attributes.remove(position, length);
        attributes.insert(position, inserted.size(), look);
    }

    QString text;
    QList<ChatText::Attributes> attributes;
};

class Random final
{
public:
    qsizetype upTo(qsizetype limit)
    {
        return static_cast<qsizetype>(m_engine() % static_cast<unsigned>(limit + 1));
    }

private:
    std::mt19937 m_engine{4711}; // NOLINT: the same steps each time
};

void compareLines(const ChatText& text, const PlainText& model)
{
    const QStringList lines = model.text.split(u'\n');
    QCOMPARE(text.lineCount(), lines.size());
    qsizetype start = 0;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const ChatText::Line line = text.line(i);
        QCOMPARE(line.text, lines[i]);
        QCOMPARE(text.lineStart(i), start);
        QCOMPARE(text.lineEnd(i), start + lines[i].size());
        QCOMPARE(line.runs.front().start, 0);
        for (size_t run = 0; run < line.runs.size() && !line.text.isEmpty(); ++run) {
            QVERIFY(line.runs[run].start < line.runEnd(run));
            for (int column = line.runs[run].start; column < line.runEnd(run); ++column)
                QCOMPARE(line.runs[run].attributes, model.attributes[start + column]);
        }
        start += lines[i].size() + 1;
    }
}

ChatText textOf(const QString& content)
{
    ChatText text;
    text.replace(0, 0, content, {});
    return text;
}

} // namespace

class ChatTextTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Long enough to make many chunks, join them and split them again.
    void behavesLikePlainText()
    {
        ChatText text;
        PlainText model;
        Random random;
        const QStringList pieces{u"w"_s,
                                 u"some words "_s,
                                 u"\n"_s,
                                 u"a\nb\n"_s,
                                 u"short line\n"_s.repeated(700),
                                 u"short line\n"_s.repeated(900) + u"x"_s,
                                 u"short line\n"_s.repeated(30) + u"\u05d0\n"_s,
                                 u"\u20ac \u05d0\n"_s,
                                 {},
                                 u"x"_s.repeated(3000),
                                 QString(QChar::ObjectReplacementCharacter)};
        for (int step = 0; step < 1500; ++step) {
            const qsizetype length = model.text.size();
            const bool atEnd = random.upTo(9) < 6;
            const qsizetype position = atEnd ? length : random.upTo(length);
            qsizetype removed =
                random.upTo(3) == 0 ? random.upTo(random.upTo(20) == 0 ? 20000 : 9) : 0;
            removed = std::min(removed, length - position);
            const QString piece = pieces[random.upTo(pieces.size() - 1)];
            const bool isLarge = piece.size() > 100;
            const QString inserted = isLarge && random.upTo(19) > 0 ? u"line\n"_s : piece;
            const ChatText::Attributes attributes{static_cast<quint16>(random.upTo(3)),
                                                  static_cast<quint16>(random.upTo(2))};
            const auto change = text.replace(position, removed, inserted, attributes);
            const qsizetype linesBefore = model.text.count(u'\n');
            QCOMPARE(change.line, QStringView(model.text).first(position).count(u'\n'));
            model.replace(position, removed, inserted, attributes);
            QCOMPARE(change.addedLines - change.removedLines,
                     model.text.count(u'\n') - linesBefore);
            QCOMPARE(text.length(), model.text.size());
            const qsizetype probe = random.upTo(text.length());
            QCOMPARE(text.lineAt(probe), QStringView(model.text).first(probe).count(u'\n'));
            QCOMPARE(text.positionOf(text.offsetOf(probe)), probe);
            if (step % 250 == 249)
                compareLines(text, model);
        }
        QCOMPARE(text.text(0, text.length()), model.text);
        QCOMPARE(text.offsetLength(), model.text.size() + model.text.count(u'\n'));
        compareLines(text, model);
        text.replace(0, text.length(), {}, {});
        QCOMPARE(text.lineCount(), 1);
        QCOMPARE(text.offsetLength(), 0);
    }

    void copiesCostAReference_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<int>("conversations"); // in turn
        QTest::addColumn<int>("growsEvery");
        QTest::newRow("the same again") << u"some words of it"_s << 1 << 1000;
        QTest::newRow("wide") << u"\u0441\u043b\u043e\u0432\u043e"_s << 1 << 1000;
        QTest::newRow("growing") << u"some words of it"_s << 1 << 3;
        QTest::newRow("several in turn") << u"some words of it"_s << 9 << 7;
    }

    // As a private conversation is put into the room, once and again.
    void copiesCostAReference()
    {
        QFETCH(QString, line);
        QFETCH(int, conversations);
        QFETCH(int, growsEvery);
        constexpr int copies = 300;
        const auto saying = [&](int nick) { return u"<n%1> %2\n"_s.arg(nick).arg(line); };
        QStringList said;
        for (int i = 0; i < conversations; ++i)
            said += u"Chat Started\n"_s + saying(i).repeated(600);
        ChatText text;
        QString expected;
        qsizetype once = 0;
        for (int i = 0; i < copies; ++i) {
            QString& one = said[i % conversations];
            if (i % growsEvery == growsEvery - 1)
                one += saying(i);
            for (const QString& piece : QStringList{u'<' + one + "> "_L1, u"waves \n"_s}) {
                text.replace(text.length(), 0, piece, {});
                expected += piece;
            }
            if (i == conversations)
                once = text.bytes();
        }
        QVERIFY2(text.bytes() < 3 * once + copies * 600, qPrintable(QString::number(text.bytes())));
        QVERIFY(text.text(0, text.length()) == expected);
        // A change of one leaves the others alone.
        for (const qsizetype at : {text.length() / 3, qsizetype(5), text.length() / 2}) {
            text.replace(at, 3, u"a\nb"_s, {});
            expected.replace(at, 3, u"a\nb"_s);
            QVERIFY(text.text(0, text.length()) == expected);
        }
    }

    void movesPositionsWithTheText()
    {
        // Ahead of what goes, at its start, in it, at its end and behind it.
        const QList<std::pair<qsizetype, qsizetype>> moves{{3, 3}, {4, 4}, {6, 4}, {8, 5}, {10, 7}};
        for (const auto& [before, after] : moves) {
            ChatText text = textOf(u"0123456789ab"_s);
            QCOMPARE(text.replace(4, 4, u"!"_s, {}).movedPosition(before), after);
        }
    }

    void heightsSumUp()
    {
        LineHeights heights;
        QList<int> model;
        Random random;
        for (int step = 0; step < 3000; ++step) {
            const int height = static_cast<int>(random.upTo(40)); // some are hidden
            if (model.isEmpty() || random.upTo(2) > 0) {
                heights.append(height);
                model.append(height);
            } else if (random.upTo(20) > 0) {
                const qsizetype line = random.upTo(model.size() - 1);
                heights.set(line, height);
                model[line] = height;
            } else {
                const qsizetype count =
                    model.size() - random.upTo(std::min<qsizetype>(model.size(), 9));
                heights.truncate(count);
                model.resize(count);
            }
        }
        const LineHeights atOnce(std::vector<int>(model.cbegin(), model.cend()));
        qint64 top = 0;
        for (qsizetype line = 0; line < model.size(); ++line) {
            QCOMPARE(heights.top(line), top);
            QCOMPARE(atOnce.top(line), top);
            if (model[line] > 0) {
                QCOMPARE(heights.lineAt(top), line);
                QCOMPARE(heights.lineAt(top + model[line] - 1), line);
            }
            top += model[line];
        }
        QCOMPARE(heights.total(), top);
        QCOMPARE(heights.lineAt(top + 1000), model.size() - 1);
    }

    void findsRoundTheEnds_data()
    {
        QTest::addColumn<qsizetype>("from");
        QTest::addColumn<QString>("wanted");
        QTest::addColumn<qsizetype>("next");
        QTest::addColumn<qsizetype>("previous");
        // "One two\nthree One\none": at 0, 14 and 18.
        QTest::newRow("from the start")
            << qsizetype(0) << u"ONE"_s << qsizetype(0) << qsizetype(18);
        QTest::newRow("from within") << qsizetype(1) << u"one"_s << qsizetype(14) << qsizetype(0);
        QTest::newRow("from the last")
            << qsizetype(18) << u"one"_s << qsizetype(18) << qsizetype(14);
        QTest::newRow("from the end") << qsizetype(21) << u"one"_s << qsizetype(0) << qsizetype(18);
        QTest::newRow("the same again")
            << qsizetype(9) << u"three"_s << qsizetype(8) << qsizetype(8);
        QTest::newRow("over a line end")
            << qsizetype(0) << u"one\none"_s << qsizetype(-1) << qsizetype(-1);
        QTest::newRow("nothing") << qsizetype(0) << QString() << qsizetype(-1) << qsizetype(-1);
    }

    void findsRoundTheEnds()
    {
        QFETCH(qsizetype, from);
        QFETCH(QString, wanted);
        const ChatText text = textOf(u"One two\nthree One\none"_s);
        QTEST(findText(text, wanted, from, SearchDirection::Forward).value_or(-1), "next");
        QTEST(findText(text, wanted, from, SearchDirection::Backward).value_or(-1), "previous");
    }
};

QTEST_GUILESS_MAIN(ChatTextTest)
#include "tst_chattext.moc"
