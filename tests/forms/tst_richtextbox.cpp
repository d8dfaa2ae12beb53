#include "support/MemoryView.h"
#include "view/ChatView.h"
#include "view/RichTextBoxWidget.h"

#include <QtTest>

#include <random>

using namespace Qt::StringLiterals;

namespace {

const InlinePicture smile{u":)"_s, u":/none.svg"_s, {18, 18}};

template<typename View>
QAbstractScrollArea* make()
{
    return new View;
}

using Make = QAbstractScrollArea* (*)();

void write(RichTextBox& view, const QString& text)
{
    view.setSelStart(view.TextLength());
    view.setSelText(text);
}

} // namespace

class RichTextBoxTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase_data()
    {
        QTest::addColumn<Make>("make");
        QTest::newRow("RichTextBoxWidget") << Make(&make<RichTextBoxWidget>);
        QTest::newRow("ChatView") << Make(&make<ChatView>);
    }

    void init()
    {
        QFETCH_GLOBAL(Make, make);
        m_widget.reset(make());
        m_widget->resize(400, 300);
    }
    void cleanup() { m_widget.reset(); }

    void takesOffsetsBeyondTheEndAsTheEnd()
    {
        write(view(), u"abc"_s + QChar(u'\0') + u"d"_s); // nothing from code 0 on
        view().setSelStart(99);
        QCOMPARE(view().SelStart(), 3);
        view().setSelStart(1);
        view().setSelLength(99);
        QCOMPARE(view().SelLength(), 2);
        view().setSelLength(-1);
        QCOMPARE(view().SelLength(), 0);
        QCOMPARE(view().TextRange(2, 99), u"c"_s);
        QCOMPARE(view().TextRange(5, 1), QString());
    }

    void keepsAttributesUntilTheyAreSet()
    {
        view().setSelColor(0x123456);
        view().setSelBold(true);
        view().setSelUnderline(true);
        view().setSelStrikeThru(true);
        view().setSelFontName(u"Courier"_s);
        view().setSelFontSize(13);
        write(view(), u"styled"_s);
        view().setSelStart(0);
        view().setSelLength(3);
        view().setSelText({});
        QCOMPARE(view().SelColor() & 0xffffff, QRgb(0x123456));
        QVERIFY(view().SelBold());
        QVERIFY(view().SelUnderline());
        QVERIFY(view().SelStrikeThru());
        QCOMPARE(view().SelFontName(), u"Courier"_s);
        QCOMPARE(view().SelFontSize(), 13);
    }

    void raisesAChangeForEachChange()
    {
        QStringList seen;
        view().onChange([&] { seen.append(view().Text()); });
        view().setSelText(u"a"_s);
        view().setSelText({});
        view().setSelStart(0);
        view().setSelLength(1);
        view().setSelText({});
        {
            const EditBlock block(view());
            view().setSelText(u"b"_s);
            view().InsertPicture(smile);
        }
        const QString picture = hasPictures() ? QString(RichTextBox::pictureCharacter) : smile.code;
        QCOMPARE(seen, QStringList({u"a"_s, {}, u"b"_s, u"b"_s + picture}));
    }

    void behavesLikeThePlainModel()
    {
        const QStringList pieces{u"word "_s, u"\r\n"_s, {},          u"line\r\nline\r\n"_s,
                                 u"\n\n"_s,  u"\n\r"_s, u"\u20ac"_s, u"\u00e9t\u00e9"_s};
        MemoryView model;
        std::mt19937 random(20260701); // NOLINT: the same steps each time
        const auto upTo = [&random](qsizetype limit) {
            return static_cast<qsizetype>(random() % static_cast<unsigned>(limit + 1));
        };
        // No place lies between CR and LF.
        const auto place = [&](qsizetype limit) {
            const qsizetype offset = upTo(limit);
            return model.TextRange(offset - 1, 2) == "\r\n"_L1 ? offset - 1 : offset;
        };
        for (int step = 0; step < 800; ++step) {
            const qsizetype start = upTo(3) == 0 ? place(model.TextLength()) : model.TextLength();
            const qsizetype end = std::max(start, place(model.TextLength()));
            const qsizetype length = upTo(2) == 0 ? std::min<qsizetype>(end - start, 40) : 0;
            const bool endsInside = model.TextRange(start + length - 1, 2) == "\r\n"_L1;
            const QString piece = pieces[upTo(pieces.size() - 1)];
            const int action = static_cast<int>(upTo(99));
            for (RichTextBox* each : {static_cast<RichTextBox*>(&model), &view()}) {
                if (action == 0) {
                    each->setText(piece);
                    continue;
                }
                each->setSelStart(start);
                each->setSelLength(endsInside ? length + 1 : length);
                if (action < 20 && hasPictures())
                    each->InsertPicture(smile);
                else
                    each->setSelText(piece);
            }
            QCOMPARE(view().TextLength(), model.TextLength());
            QCOMPARE(view().SelStart(), model.SelStart());
            QCOMPARE(view().SelLength(), model.SelLength());
            QCOMPARE(view().SelText(), model.SelText());
            const qsizetype from = upTo(model.TextLength());
            QCOMPARE(view().TextRange(from, 30), model.TextRange(from, 30));
            if (step % 20 == 0)
                QCOMPARE(view().Text(), model.Text());
        }
        QCOMPARE(view().Text(), model.Text());
    }

    void releaseTellsTheReadersSelection()
    {
        if (hasPictures())
            return; // conversations have a selection for readers of its own
        view().setSelFontSize(12);
        write(view(), u"second "_s);
        auto& topic = dynamic_cast<RichTextBoxWidget&>(view());
        topic.show();
        QVERIFY(QTest::qWaitForWindowExposed(&topic));
        const auto before = [&](int offset) {
            QTextCursor cursor(topic.document());
            cursor.setPosition(offset);
            return topic.cursorRect(cursor).center();
        };
        QSignalSpy clicks(&topic, SIGNAL(Click()));
        QTest::mousePress(topic.viewport(), Qt::LeftButton, {}, before(1));
        QTest::mouseMove(topic.viewport(), before(4));
        QTest::mouseRelease(topic.viewport(), Qt::LeftButton, {}, before(4));
        QCOMPARE(view().SelText(), u"eco"_s);
        QCOMPARE(clicks.count(), 1);
        QTest::mouseClick(topic.viewport(), Qt::LeftButton, {}, before(2));
        QCOMPARE(view().SelLength(), 0);
        write(view(), QString(200, u'M'));
        const auto leftEdge = [&](int scrolled) {
            topic.horizontalScrollBar()->setValue(scrolled);
            return topic.viewport()->grab({0, 6, 4, 40}).toImage();
        };
        QCOMPARE(leftEdge(100), leftEdge(105)); // the text has faded there
    }

private:
    RichTextBox& view() const { return dynamic_cast<RichTextBox&>(*m_widget); }
    // The topic keeps their codes.
    bool hasPictures() const { return qobject_cast<ChatView*>(m_widget.get()) != nullptr; }
    std::unique_ptr<QAbstractScrollArea> m_widget;
};

QTEST_MAIN(RichTextBoxTest)
#include "tst_richtextbox.moc"
