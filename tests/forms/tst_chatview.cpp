#include "platform/Resources.h"
#include "text/Links.h"
#include "text/SmileyTable.h"
#include "view/AccessibleChanges.h"
#include "view/ChatView.h"
#include "view/LineAnnouncer.h"
#include "view/LineDecor.h"
#include "view/LineLayout.h"
#include "view/ReadableGround.h"
#include "view/ViewLook.h"

#include <QtTest>
#include <QtWidgets>

using namespace Qt::StringLiterals;

namespace {

class PaintCounter final : public QObject
{
public:
    int count = 0;

    bool eventFilter(QObject*, QEvent* event) override
    {
        count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
};

} // namespace

class ChatViewTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_view = std::make_unique<ChatView>();
        m_view->setSelFontSize(10);
        m_view->resize(400, 300);
        m_view->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_view.get()));
    }
    void cleanup() { m_view.reset(); }

    void paintsOnceAFrameAndThenRests()
    {
        PaintCounter painted;
        viewport()->installEventFilter(&painted);
        settle();
        painted.count = 0;
        QElapsedTimer time;
        time.start();
        for (int i = 0; i < 500; ++i) {
            writeLines(1);
            QCoreApplication::processEvents();
        }
        const auto frames = static_cast<int>(time.elapsed() / 16);
        QVERIFY2(painted.count <= frames + 2, qPrintable(QString::number(painted.count)));
        settle();
        QVERIFY(painted.count > 0);
        const int settled = painted.count;
        QCoreApplication::processEvents();
        QVERIFY(painted.count <= settled + 1);
    }

    void followsTheNewestLine()
    {
        writeLines(200);
        write(u"newest"_s);
        settle();
        QCOMPARE(bar().value(), bar().maximum());
        QVERIFY(viewport()->rect().contains(m_view->characterRect(position(u"newest"_s))));
        m_view->setText(u"again"_s);
        settle();
        QCOMPARE(bar().maximum(), 0);
        QVERIFY(m_view->characterRect(0).top() < 20); // short text starts at the top
    }

    void holdsItsPlaceWhileLinesArrive()
    {
        auto* notice = m_view->findChild<QToolButton*>(u"unseenNotice"_s);
        writeLines(200);
        settle();
        bar().triggerAction(QAbstractSlider::SliderPageStepSub);
        const qsizetype read = m_view->chatText().lineStart(180);
        const QRect place = m_view->characterRect(read);
        writeLines(300);
        settle();
        QCOMPARE(m_view->characterRect(read), place);
        QVERIFY(notice->isVisible());
        QCOMPARE(notice->text(), u"New messages below"_s);
        QVERIFY(notice->accessibleName().endsWith(u": 300"_s));
        QTest::mouseClick(notice, Qt::LeftButton);
        settle();
        QCOMPARE(bar().value(), bar().maximum());
        QVERIFY(!notice->isVisible());

        bar().triggerAction(QAbstractSlider::SliderPageStepSub);
        QVERIFY(!m_view->isFollowing());
        QTest::keyClick(m_view.get(), Qt::Key_End);
        QVERIFY(m_view->isFollowing());
    }

    // However wrong the estimates above are.
    void pagesByExactlyOnePage()
    {
        writeLines(600);
        settle();
        int pages = 0;
        while (bar().value() > bar().pageStep()) {
            const int y = viewport()->height() / 4;
            qsizetype shown = -1;
            for (int down = y; shown < 0; ++down)
                shown = m_view->offsetAt({20, down});
            shown = m_view->chatText().positionOf(shown);
            const int top = m_view->characterRect(shown).top();
            bar().triggerAction(QAbstractSlider::SliderPageStepSub);
            if (bar().value() == 0)
                break;
            QCOMPARE(m_view->characterRect(shown).top(), top + bar().pageStep());
            ++pages;
        }
        QVERIFY(pages > 20);
        bar().setValue(0);
        QCOMPARE(m_view->characterRect(0).top(), ChatScroll::margin);
    }

    void jumpsAnywhereAndBack()
    {
        writeLines(2000);
        settle();
        for (const double part : {0.5, 0.1, 0.9, 0.0}) {
            bar().setValue(static_cast<int>(bar().maximum() * part));
            settle();
            const double reached = static_cast<double>(bar().value()) / bar().maximum();
            QVERIFY(std::abs(reached - part) < 0.02);
            QVERIFY(!m_view->isFollowing());
        }
        QCOMPARE(m_view->offsetAt(before(0) + viewport()->pos()), 0);
        QCOMPARE(m_view->offsetAt(QPoint(380, before(0).y())), -1); // beside its line
        QCOMPARE(m_view->offsetAt({-5, -5}), -1);
        m_view->scrollByPages(1);
        m_view->scrollByPages(-9); // no further than to the start
        QCOMPARE(m_view->characterRect(0).top(), ChatScroll::margin);
    }

    void keepsTheCaretInSight()
    {
        writeLines(100);
        settle();
        m_view->selectForReader(m_view->chatText().length(), m_view->chatText().length());
        for (int row = 0; row < 60; ++row) {
            QTest::keyClick(m_view.get(), Qt::Key_Up, Qt::ShiftModifier);
            const QRect caret = m_view->characterRect(m_view->readerSelection().start());
            QVERIFY(caret.top() >= 0 && caret.bottom() < viewport()->height());
        }
    }

    void keepsTheTopLineInAnyWidthAndZoom()
    {
        writeLines(1000);
        settle();
        bar().setValue(bar().maximum() / 2);
        qsizetype line = 0;
        while (m_view->characterRect(m_view->chatText().lineStart(line)).top() < 0)
            ++line;
        const qsizetype start = m_view->chatText().lineStart(line);
        for (const auto& [width, zoom] :
             {std::pair(300, 0), std::pair(700, 10), std::pair(400, -15), std::pair(400, 5)}) {
            const int maximum = bar().maximum();
            m_view->resize(width, 300);
            m_view->look().zoomBy(zoom);
            settle();
            const QRect place = m_view->characterRect(start);
            QVERIFY(place.bottom() > 0 && place.top() < 150);
            QCOMPARE(bar().maximum() > maximum, zoom > 0 || width < 400);
        }
        bar().setValue(bar().maximum());
        m_view->resize(250, 200);
        settle();
        QCOMPARE(bar().value(), bar().maximum());
        QVERIFY(m_view->isFollowing());
    }

    void wrapsVeryLongLines_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("words") << u"many short words "_s.repeated(2000);
        QTest::newRow("one word") << QString(32'767, u'w');
        QTest::newRow("combining marks") << u"e"_s + QString(5'000, QChar(0x301));
        QTest::newRow("right to left") << u"\u05e9\u05dc\u05d5\u05dd "_s.repeated(1000);
        QTest::newRow("surrogates") << u"\U0001f600"_s.repeated(3000);
        QTest::newRow("controls") << u"a\tb\u0001c\u000f\u2028d\u2029e "_s.repeated(300);
    }

    void wrapsVeryLongLines()
    {
        QFETCH(QString, text);
        ChatText content;
        content.replace(0, 0, text, {});
        AttributeTables tables;
        tables.styles.indexOf({});
        const StyleFormats formats(tables, m_view->font(), m_view->palette());
        LineLayout layout(content.line(0), formats, 300);
        for (const int width : {300, 90, 1}) {
            layout.wrap(width);
            int column = 0;
            int top = 0;
            for (const LineLayout::Row& row : layout.rows()) {
                QCOMPARE(row.start, column);
                QCOMPARE(row.top, top);
                QVERIFY(row.end > row.start);
                column = row.end;
                top += row.height;
            }
            QCOMPARE(column, text.size());
            QCOMPARE(layout.height(), top);
        }
        write(text);
        settle();
        const int last = m_view->characterRect(m_view->chatText().length() - 1).center().y();
        QVERIFY(last > 0 && last < viewport()->height());
    }

    void estimatesOneRowAboutAsItIs()
    {
        AttributeTables tables;
        const quint16 usual = tables.styles.indexOf({});
        TextStyle large;
        large.fontSize = 24;
        const quint16 big = tables.styles.indexOf(large);
        const auto tall =
            static_cast<quint16>(tables.pictures.indexOf({u":)"_s, {}, {18, 90}}) + 1);
        ChatText text;
        for (const auto& [line, attributes] :
             {std::pair(u"plain words\n\n"_s, ChatText::Attributes{usual, 0}),
              std::pair(u"\u0448\u0448\u0448\n"_s, ChatText::Attributes{usual, 0}),
              std::pair(u"large words\n"_s, ChatText::Attributes{big, 0}),
              std::pair(u"\ufffc\ufffc\n"_s, ChatText::Attributes{usual, tall})})
            text.replace(text.length(), 0, line, attributes);
        for (const double zoom : {1.0, 2.0}) {
            const StyleFormats formats(tables, m_view->font(), m_view->palette(), zoom);
            for (qsizetype line = 0; line < 5; ++line) {
                const auto extent = formats.estimate(text, line);
                const LineLayout layout(text.line(line), formats, 10'000);
                QVERIFY(std::abs(extent.rowHeight - layout.height()) <= 2);
                const double width = layout.rows().front().line.naturalTextWidth();
                QVERIFY2(std::abs(extent.width - width) <= 0.25 * width, QByteArray::number(line));
            }
        }
        // What is laid out counts as it is, whatever the width becomes; behind the last line is
        // nothing.
        ChatLayout layout(
            text, std::make_unique<StyleFormats>(tables, m_view->font(), m_view->palette(), 1.0));
        for (const int width : {10'000, 40, 90}) {
            layout.setWidth(width);
            layout.update();
            for (qsizetype line = 0; line < 6; ++line) {
                const int height = line < 5 ? layout.line(line).height() : 0;
                QCOMPARE(layout.top(line + 1) - layout.top(line), height);
            }
        }
    }

    void zooms()
    {
        ChatView other(nullptr, std::shared_ptr<ViewLook>(&m_view->look(), [](ViewLook*) {}));
        other.setSelText(u"word"_s);
        write(u"word"_s);
        settle();
        const auto height = [&] { return m_view->characterRect(0).height(); };
        const auto press = [&](Qt::Key key, int times = 1) {
            for (int i = 0; i < times; ++i)
                QTest::keyClick(m_view.get(), key, Qt::ControlModifier);
            return qRound(m_view->look().zoom() * 100);
        };
        const auto turn = [&](int angle) {
            QWheelEvent event({9, 9}, {9, 9}, {}, {0, angle}, Qt::NoButton, Qt::ControlModifier,
                              Qt::NoScrollPhase, false);
            QCoreApplication::sendEvent(viewport(), &event);
            return qRound(m_view->look().zoom() * 100);
        };
        const int usual = height();
        const int others = other.characterRect(0).height();
        QCOMPARE(press(Qt::Key_Plus), 110);
        QCOMPARE(press(Qt::Key_Equal), 120);
        QVERIFY(height() > usual && other.characterRect(0).height() > others); // all conversations
        QCOMPARE(press(Qt::Key_Minus), 110);
        QCOMPARE(turn(60), 110); // half a notch
        QCOMPARE(turn(60), 120);
        QCOMPARE(turn(-240), 100);
        QCOMPARE(press(Qt::Key_Plus, 50), 300);
        QCOMPARE(press(Qt::Key_Minus, 50), 50);
        QVERIFY(height() < usual);
        QCOMPARE(press(Qt::Key_0), 100);
        QCOMPARE(height(), usual);
        QTest::keyClick(m_view.get(), Qt::Key_Plus);
        QCOMPARE(turn(0), 100);
    }

    void makesRoomForPictures()
    {
        loadResources();
        const QSize size(60, 70); // higher than text
        write(u"a "_s);
        m_view->InsertPicture({u"[]"_s, smileys::extra.picture(), size});
        write(u"b\r\nnext"_s);
        settle();
        const QRect picture = m_view->characterRect(2);
        QVERIFY(std::abs(picture.width() - size.width()) <= 1); // its place may be a fraction
        QVERIFY(m_view->characterRect(position(u"next"_s)).top() >
                picture.top() + size.height() - 1);
        // The picture in sight stays what it is while new ones come to be known.
        const QImage drawn = viewport()->grab(picture).toImage();
        for (int i = 0; i < 64; ++i)
            m_view->InsertPicture({QString::number(i), QString::number(i), {1, 1}});
        QCOMPARE(viewport()->grab(picture).toImage(), drawn);
    }

    void isReadableOnADarkBase()
    {
        const QColor base(20, 20, 30);
        QPalette dark = m_view->palette();
        dark.setColor(QPalette::Base, base);
        dark.setColor(QPalette::Text, Qt::white);
        m_view->setPalette(dark);
        for (const QRgb color : {0x000000, 0x0000ff, 0x00007f, 0x7f0000, 0xff0000, 0xffffff}) {
            m_view->setText({});
            m_view->setSelColor(color);
            write(u"MMMM"_s);
            settle();
            const QImage shown = viewport()->grab({0, 0, 60, 30}).toImage();
            double best = 0;
            for (int at = 0; at < 60 * 30; ++at)
                best = std::max(best, contrast(shown.pixel(at % 60, at / 60), base.rgb()));
            QVERIFY2(best >= 3, qPrintable(QColor(color).name()));
        }
    }

    void putsAGroundBehindPaleColours()
    {
        constexpr QRgb paper = qRgb(255, 255, 255);
        QVERIFY(!readableGround(qRgb(255, 0, 0), paper).isValid());
        for (const QRgb pale : {paper, qRgb(255, 127, 0)})
            QVERIFY(contrast(pale, readableGround(pale, paper).rgb()) >= 4.5);
    }

    void knowsWhenLinesCame()
    {
        qint64 now = QDateTime(QDate(2003, 4, 5), QTime(6, 7, 8)).toSecsSinceEpoch();
        m_view->setNow([&now] { return now; });
        const LineNotes& notes = m_view->notes();
        const auto hint = [&](qsizetype line) { return LineDecor::timeHint(notes, line); };
        writeLines(3);
        now += 61;
        write(u"in two "_s);
        write(u"pieces\r\nopen"_s);
        QVERIFY(hint(2).endsWith(u" 06:07:08"_s));
        QVERIFY(hint(3).endsWith(u" 06:08:09"_s));
        m_view->setSelStart(0); // what is inserted further up takes no line's time away
        m_view->setSelText(u"first\r\n"_s);
        QVERIFY(hint(3).endsWith(u" 06:07:08"_s));
        QVERIFY(hint(4).endsWith(u" 06:08:09"_s));
        m_view->setText({});
        now += 60;
        writeLines(1);
        QVERIFY(hint(0).endsWith(u" 06:09:09"_s));
        settle();

        const int left = m_view->characterRect(0).left();
        m_view->look().setShowsTimes(true);
        settle();
        const int margin = m_view->characterRect(0).left();
        QVERIFY(margin > left + 20);
        const auto pointAt = [this](QPoint place) {
            QHelpEvent event(QEvent::ToolTip, place, viewport()->mapToGlobal(place));
            QCoreApplication::sendEvent(viewport(), &event);
        };
        pointAt({2, before(0).y()});
        QVERIFY(QToolTip::text().endsWith(" 06:09:09"_L1));
        pointAt({2, 200}); // below it
        QTRY_VERIFY(!QToolTip::isVisible());
        QCOMPARE(m_view->offsetAt(before(1) + viewport()->pos()), 1);
        m_view->selectAll();
        QVERIFY(selected().startsWith(u"line "_s));
    }

    void marksLines()
    {
        m_view->markLastLine(); // of nothing
        writeLines(5);
        m_view->markLastLine();
        writeLines(1);
        const auto& marked = m_view->notes().marked();
        QCOMPARE(marked, std::vector<qsizetype>{4});
        m_view->setSelStart(0);
        m_view->setSelText(u"one more above\r\n"_s);
        QCOMPARE(marked, std::vector<qsizetype>{5});
        m_view->setText({});
        QVERIFY(marked.empty());
    }

    void knowsWhereTheReaderLeftOff()
    {
        const LineNotes& notes = m_view->notes();
        writeLines(4);
        QCOMPARE(notes.firstUnread(), -1);
        QWidget other;
        use(other);
        QCOMPARE(notes.firstUnread(), -1);
        writeLines(2);
        QCOMPARE(notes.firstUnread(), 4);
        use(*m_view);
        QVERIFY(m_view->isLookedAt());
        QCOMPARE(notes.firstUnread(), 4); // he is still to see it
        settle();
        const int top = m_view->characterRect(m_view->chatText().lineStart(4)).top();
        QCOMPARE(viewport()->grab({0, top, 1, 1}).toImage().pixelColor(0, 0),
                 m_view->palette().color(QPalette::Highlight));
        use(other);
        QCOMPARE(notes.firstUnread(), -1);
    }

    void selectsByDragging()
    {
        write(u"first line\r\nsecond line\r\nthird line\r\n"_s);
        settle();
        QSignalSpy clicks(m_view.get(), &ChatView::Click);
        const QPoint from = before(position(u"line"_s));
        const QPoint to = before(position(u"third"_s) + 2);
        for (const auto& [press, release] : {std::pair(from, to), std::pair(to, from)}) {
            QTest::mousePress(viewport(), Qt::LeftButton, {}, press);
            QTest::mouseMove(viewport(), QPoint(50, 30));
            QTest::mouseMove(viewport(), release);
            QTest::mouseRelease(viewport(), Qt::LeftButton, {}, release);
            QCOMPARE(selected(), u"line\r\nsecond line\r\nth"_s);
        }
        QCOMPARE(clicks.count(), 2);
        QTest::keyClick(m_view.get(), Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QApplication::clipboard()->text(), u"line\nsecond line\nth"_s);
        QTest::mouseClick(viewport(), Qt::LeftButton, Qt::ShiftModifier,
                          before(position(u"second"_s)));
        QCOMPARE(selected(), u"second line\r\nth"_s);
        QTest::mouseClick(viewport(), Qt::LeftButton, {}, from);
        QCOMPARE(m_view->SelLength(), 0);
    }

    void scrollsWhileDraggingBeyondAnEdge()
    {
        writeLines(100);
        settle();
        const int bottom = bar().value();
        const QPoint press = viewport()->rect().center();
        QTest::mousePress(viewport(), Qt::LeftButton, {}, press);
        QTest::mouseMove(viewport(), QPoint(press.x(), -30));
        QTRY_VERIFY(bar().value() < bottom - 300);
        QTest::mouseMove(viewport(), press);
        QTest::mouseRelease(viewport(), Qt::LeftButton, {}, press);
        settle(); // no timer goes on
        QVERIFY(m_view->SelLength() > 100);
    }

    void selectsWordsAndLines()
    {
        write(u"one two, three\r\nfour five\r\n"_s);
        settle();
        QSignalSpy doubleClicks(m_view.get(), &ChatView::DblClick);
        const auto send = [&](QEvent::Type type, QPoint place, ulong time) {
            QMouseEvent event(type, place, viewport()->mapToGlobal(place), Qt::LeftButton,
                              Qt::LeftButton, Qt::NoModifier);
            event.setTimestamp(time);
            QCoreApplication::sendEvent(viewport(), &event);
        };
        const QPoint onTwo = before(position(u"wo,"_s));
        send(QEvent::MouseButtonDblClick, onTwo, 500);
        QTest::mouseRelease(viewport(), Qt::LeftButton, {}, onTwo);
        QCOMPARE(selected(), u"two"_s);
        QCOMPARE(doubleClicks.count(), 1);
        send(QEvent::MouseButtonDblClick, onTwo, 700); // held, it goes on by words
        m_view->setSelStart(0);                        // whatever comes meanwhile
        m_view->setSelText(u"and "_s);
        send(QEvent::MouseMove, before(5), 710);
        QCOMPARE(readerSelected(), u"one two"_s);
        // A third press in time takes the line, and goes on by lines.
        send(QEvent::MouseButtonDblClick, onTwo, 1000);
        send(QEvent::MouseButtonPress, onTwo, 1010);
        QCOMPARE(readerSelected(), u"and one two, three"_s);
        const QPoint onFive = before(position(u"ive"_s));
        send(QEvent::MouseMove, onFive, 1020);
        QTest::mouseRelease(viewport(), Qt::LeftButton, {}, onFive);
        QCOMPARE(selected(), u"and one two, three\r\nfour five"_s);
    }

    void selectsByKeyboard_data()
    {
        QTest::addColumn<QList<QKeyCombination>>("keys");
        QTest::addColumn<QString>("selection");
        const auto shift = [](Qt::Key key) { return Qt::SHIFT | key; };
        const auto controlShift = [](Qt::Key key) { return Qt::CTRL | Qt::SHIFT | key; };
        using Keys = QList<QKeyCombination>;
        const auto row = [](const char* name, const Keys& keys, const QString& selection) {
            QTest::newRow(name) << keys << selection;
        };
        const Keys left(8, shift(Qt::Key_Left));
        const Keys wordLeft(3, controlShift(Qt::Key_Left));
        const Keys toTheEnd{controlShift(Qt::Key_End)};
        const Keys down{Qt::Key_Down};
        row("characters", Keys(3, shift(Qt::Key_Right)), u"wor"_s);
        row("words", {controlShift(Qt::Key_Right)}, u"words"_s);
        row("words back", {controlShift(Qt::Key_Left)}, u"two "_s);
        row("words over a line end", Keys(3, controlShift(Qt::Key_Right)), u"words\r\nsh"_s);
        row("words back over a line end", down + wordLeft, u"words\r\nsh"_s);
        row("over the line end", Keys(6, shift(Qt::Key_Right)), u"words\r\n"_s);
        row("keeps its column", Keys(2, shift(Qt::Key_Down)), u"words\r\nsh\r\nlast"_s);
        row("row end", {shift(Qt::Key_End)}, u"words"_s);
        row("row start", down + Keys{shift(Qt::Key_Home)}, u"sh"_s);
        row("page", {shift(Qt::Key_PageUp)}, u"two "_s);
        row("to the end", toTheEnd, u"words\r\nsh\r\nlast 🙂e\u0301 here"_s);
        row("whole characters", toTheEnd + left + Keys(2, shift(Qt::Key_Right)),
            u"words\r\nsh\r\nlast 🙂"_s);
        row("everything", {Qt::CTRL | Qt::Key_A}, u"two words\r\nsh\r\nlast 🙂e\u0301 here"_s);
    }

    void selectsByKeyboard()
    {
        QFETCH(QList<QKeyCombination>, keys);
        m_view->setSelFontName(u"DejaVu Sans Mono"_s);
        write(u"two words\r\nsh\r\nlast 🙂e\u0301 here"_s);
        settle();
        m_view->selectForReader(4, 4);
        for (const QKeyCombination key : keys)
            QTest::keyClick(m_view.get(), key.key(), key.keyboardModifiers());
        QTest::keyRelease(m_view.get(), Qt::Key_Shift);
        QTEST(selected(), "selection");
    }

    void keepsTheReadersSelectionWhileWriting()
    {
        write(u"keep :) this\r\n"_s);
        m_view->selectForReader(position(u"this"_s), position(u"this"_s) + 4);
        m_view->setSelStart(5);
        m_view->setSelLength(2);
        m_view->setSelText({});
        for (int i = 0; i < 2; ++i)
            m_view->InsertPicture({u":)"_s, {}, {18, 18}});
        writeLines(50);
        QCOMPARE(m_view->SelLength(), 0);
        QCOMPARE(readerSelected(), u"this"_s);
        QTest::keyClick(m_view.get(), Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QApplication::clipboard()->text(), u"this"_s);
        m_view->selectForReader(0, 12);
        m_view->copy(); // pictures as their codes
        QCOMPARE(QApplication::clipboard()->text(), u"keep :):) this"_s);
    }

    void offersAMenu()
    {
        write(u"some text"_s);
        const auto entry = [this](const QString& text) {
            for (QAction* action : openMenu({10, 10})->actions()) {
                if (action->text() == text)
                    return action;
            }
            return static_cast<QAction*>(nullptr);
        };
        QVERIFY(!entry(u"&Copy"_s)->isEnabled());
        entry(u"Select &All"_s)->trigger();
        QVERIFY(entry(u"&Copy"_s)->isEnabled());
        entry(u"&Copy"_s)->trigger();
        QCOMPARE(QApplication::clipboard()->text(), u"some text"_s);
        entry(u"&Find..."_s)->trigger();
        QVERIFY(m_view->findChild<QLineEdit*>(u"findText"_s)->isVisible());
    }

    void leadsToLinks()
    {
        // A picture may stand in a link; what is meant is its code.
        write(u"see http://a.org/"_s);
        m_view->InsertPicture({u"ps2"_s, {}, {18, 18}});
        write(u"/x and http://b.org\r\n"_s);
        writeLines(1);
        QStringList opened;
        settle();
        const QPoint onFirst = m_view->characterRect(position(u"http"_s)).center();
        const auto entries = [&](QContextMenuEvent::Reason reason, QPoint place) {
            const std::unique_ptr<QMenu> menu(openMenu(place, reason));
            QStringList texts;
            for (const QAction* action : menu->actions())
                texts += action->text();
            menu->actions().first()->trigger();
            return texts.mid(0, 2);
        };
        const auto shown = [this](QPoint pointer) {
            QTest::mouseMove(viewport(), pointer);
            return viewport()->grab().toImage();
        };
        const QPoint elsewhere(300, 200);

        m_view->setLinks({linksIn, {}});
        QCOMPARE(entries(QContextMenuEvent::Mouse, onFirst).first(), u"Copy &Link"_s);
        QCOMPARE(QApplication::clipboard()->text(), u"http://a.org/ps2/x"_s);
        QCOMPARE(shown(onFirst), shown(elsewhere));

        m_view->setLinks({linksIn, [&opened](const QString& link) { opened += link; }});
        QCOMPARE(entries(QContextMenuEvent::Mouse, onFirst),
                 QStringList({u"&Open Link"_s, u"Copy &Link"_s}));
        QCOMPARE(opened, QStringList(u"http://a.org/ps2/x"_s));
        settle();
        const QImage plain = shown(elsewhere);
        PaintCounter painted;
        viewport()->installEventFilter(&painted);
        QTest::mouseMove(viewport(), onFirst);
        QTRY_VERIFY(painted.count > 0);
        QVERIFY(shown(onFirst) != plain); // underlined
        QCOMPARE(shown(elsewhere), plain);

        use(*m_view); // Tab goes from link to link
        m_view->setFocus();
        QTest::keyClick(m_view.get(), Qt::Key_Tab);
        QTest::keyClick(m_view.get(), Qt::Key_Tab);
        QTest::keyClick(m_view.get(), Qt::Key_Return);
        QCOMPARE(opened, QStringList({u"http://a.org/ps2/x"_s, u"http://b.org"_s}));
        QTest::keyClick(m_view.get(), Qt::Key_Backtab);
        QCOMPARE(readerSelected(), u"http://a.org/ps2/x"_s);
        QCOMPARE(entries(QContextMenuEvent::Keyboard, {0, 0}).first(), u"&Open Link"_s);
    }

    void findsText()
    {
        write(u"Needle one\r\n"_s);
        writeLines(300);
        for (const QString& needle : {u"second needle\r\n"_s, u"third needle\r\n"_s}) {
            write(needle);
            writeLines(300);
        }
        settle();
        auto* line = m_view->findChild<QLineEdit*>(u"findText"_s);
        auto* result = m_view->findChild<QLabel*>(u"findResult"_s);
        QTest::keyClick(m_view.get(), Qt::Key_F, Qt::ControlModifier);
        QVERIFY(line->isVisible());
        const qsizetype first = position(u"Needle"_s);
        const qsizetype second = position(u"needle"_s);
        const qsizetype third = position(u"third "_s) + 6;
        const auto shows = [this](qsizetype match) {
            return m_view->readerSelection().start() == match && selected().size() == 6 &&
                   viewport()->rect().contains(m_view->characterRect(match));
        };
        QTest::keyClicks(line, u"needle"_s);
        QVERIFY(shows(first));
        QTest::keyClick(line, Qt::Key_Return);
        QVERIFY(shows(second));
        QTest::keyClick(line, Qt::Key_Return, Qt::ShiftModifier);
        QVERIFY(shows(first));
        QTest::keyClick(line, Qt::Key_Return, Qt::ShiftModifier);
        QVERIFY(shows(third));
        QVERIFY(!result->isVisible());
        QTest::keyClicks(line, u"!"_s);
        QVERIFY(result->isVisible());
        QCOMPARE(result->text(), u"Not found"_s);
        line->setText(u"needle"_s);
        const auto buttons = line->parent()->findChildren<QToolButton*>();
        buttons[0]->click();
        QVERIFY(shows(second));
        buttons[1]->click();
        QVERIFY(shows(third));
        QTest::keyClick(line, Qt::Key_Escape);
        QVERIFY(!line->isVisible());
        QVERIFY(shows(third));
    }

    void isReadByAScreenReader()
    {
        write(u"first words here\r\nsecond line\r\n"_s);
        settle();
        QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(m_view.get());
        QVERIFY(accessible && accessible->state().readOnly && accessible->state().multiLine);
        QAccessibleTextInterface* text = accessible->textInterface();
        QCOMPARE(text->text(6, 11), u"words"_s);
        QCOMPARE(text->text(0, -1), u"first words here\nsecond line\n"_s);
        int start = 0;
        int end = 0;
        QCOMPARE(text->textAtOffset(8, QAccessible::WordBoundary, &start, &end), u"words"_s);
        QCOMPARE(std::pair(start, end), std::pair(6, 11));
        constexpr auto line = QAccessible::LineBoundary;
        QCOMPARE(text->textAtOffset(8, line, &start, &end), u"first words here\n"_s);
        QCOMPARE(text->textAfterOffset(8, line, &start, &end), u"second line\n"_s);
        QCOMPARE(text->textBeforeOffset(20, line, &start, &end), u"first words here\n"_s);
        QCOMPARE(text->textBeforeOffset(3, line, &start, &end), QString());
        QCOMPARE(text->textAfterOffset(28, QAccessible::CharBoundary, &start, &end), QString());
        const QRect place = text->characterRect(18);
        QCOMPARE(text->offsetAtPoint(place.center()), 18);
        text->setSelection(0, 17, 23);
        QCOMPARE(text->selectionCount(), 1);
        QCOMPARE(selected(), u"second"_s);
        text->selection(0, &start, &end);
        QCOMPARE(std::pair(start, end), std::pair(17, 23));
        text->addSelection(0, 5);
        QCOMPARE(selected(), u"first"_s);
        text->removeSelection(0);
        QCOMPARE(text->selectionCount(), 0);
        text->setCursorPosition(3);
        QTest::keyClick(m_view.get(), Qt::Key_Right);
        QCOMPARE(text->cursorPosition(), 4);
        m_view->setSelStart(m_view->TextLength());
        m_view->InsertPicture({u":))"_s, {}, {18, 18}});
        write(u" so"_s);
        QCOMPARE(text->characterCount(), 35);
        QCOMPARE(text->text(24, 34), u"line\n:)) s"_s);
        QCOMPARE(text->text(30, 33), u")) "_s);
        QCOMPARE(text->textAtOffset(30, QAccessible::CharBoundary, &start, &end), u":))"_s);
        QCOMPARE(std::pair(start, end), std::pair(29, 32));
        text->setSelection(0, 33, 35);
        QCOMPARE(selected(), u"so"_s);
        QCOMPARE(text->attributes(2, &start, &end), u"color:rgb(0,0,0);"_s);
        QCOMPARE(std::pair(start, end), std::pair(0, 16));
        m_view->setSelBold(true);
        m_view->setSelUnderline(true);
        m_view->setSelStrikeThru(true);
        write(u"!"_s);
        QCOMPARE(text->attributes(35, &start, &end),
                 u"color:rgb(0,0,0);font-weight:bold;text-underline-style:solid;"
                 "text-line-through-type:single;"_s);
        QCOMPARE(text->textAtOffset(8, QAccessible::NoBoundary, &start, &end), text->text(0, -1));
        writeLines(300);
        settle();
        text->scrollToSubstring(6, 11);
        settle();
        QCOMPARE(bar().value(), 0);
    }

    void tellsAScreenReaderOfChanges()
    {
        QStringList told;
        ChatText text;
        AttributeTables tables;
        tables.styles.indexOf({});
        const auto smiley = static_cast<quint16>(tables.pictures.indexOf({u":)"_s, {}, {}}) + 1);
        SpokenText spoken(text, tables);
        AccessibleChanges changes(
            m_view.get(), text, spoken, [&told](const QAccessibleEvent& event) {
                if (event.type() == QAccessible::TextInserted) {
                    const auto& inserted = static_cast<const QAccessibleTextInsertEvent&>(event);
                    told << u"+%1 %2"_s.arg(inserted.changePosition()).arg(inserted.textInserted());
                } else if (event.type() == QAccessible::TextRemoved) {
                    const auto& removed = static_cast<const QAccessibleTextRemoveEvent&>(event);
                    told << u"-%1 %2"_s.arg(removed.changePosition()).arg(removed.textRemoved());
                } else if (event.type() == QAccessible::TextCaretMoved) {
                    const auto& moved = static_cast<const QAccessibleTextCursorEvent&>(event);
                    told << u"caret %1"_s.arg(moved.cursorPosition());
                }
            });
        const auto replace = [&](qsizetype start, qsizetype length, const QString& inserted) {
            changes.aboutToReplace(start, length, inserted);
            spoken.textChanged(text.replace(start, length, inserted, {}));
        };
        const auto taken = [&told] { return std::exchange(told, {}); };
        replace(0, 0, u"one "_s);
        replace(4, 0, u"two\n"_s);
        replace(4, 2, u"TW"_s); // nobody knows of it yet
        QCOMPARE(taken(), QStringList());
        changes.textShown();
        QCOMPARE(taken(), QStringList({u"+0 one TWo\n"_s}));
        changes.textShown();
        QCOMPARE(taken(), QStringList());
        replace(4, 3, u"2"_s);
        QCOMPARE(taken(), QStringList({u"-4 TWo"_s, u"+4 2"_s}));
        replace(6, 0, u"three"_s);
        replace(5, 2, u"!"_s); // the known line end and a letter that is not
        QCOMPARE(taken(), QStringList({u"-5 \n"_s}));
        changes.textShown();
        QCOMPARE(taken(), QStringList({u"+5 !hree"_s}));
        ReaderSelection reader(text);
        reader.select(1, 3);
        changes.readerMoved(reader);
        QCOMPARE(taken(), QStringList({u"caret 3"_s}));
        // Pictures are heard as their codes, and count as many characters.
        spoken.textChanged(text.replace(1, 0, u"\ufffc"_s, {0, smiley}));
        changes.skipNewText();
        replace(text.length(), 0, u"a b"_s);
        spoken.textChanged(text.replace(text.length() - 2, 1, u"\ufffc"_s, {0, smiley}));
        QCOMPARE(changes.textShown(), u"a:)b"_s);
        QCOMPARE(taken(), QStringList({u"+12 a:)b"_s}));
        reader.select(text.length(), text.length());
        changes.readerMoved(reader);
        QCOMPARE(taken(), QStringList({u"caret 16"_s}));
    }

    void announcesLinesWhileTheKeyboardIsElsewhere()
    {
        auto* announcer = m_view->findChild<LineAnnouncer*>();
        QCOMPARE(QAccessible::queryAccessibleInterface(announcer)->role(),
                 QAccessible::Notification);
        const auto said = [&] {
            announcer->setAccessibleName({});
            m_view->tellScreenReader();
            return announcer->accessibleName();
        };
        QVERIFY(QTest::qWaitForWindowActive(m_view.get()));
        m_view->find(); // the keyboard is in its field
        write(u"hello "_s);
        m_view->InsertPicture({u":)"_s, {}, {18, 18}});
        write(u"\r\nworld\r\n"_s);
        QCOMPARE(said(), u"hello :)\nworld"_s);
        QCOMPARE(said(), QString());
        writeLines(300); // nobody is read a flood to its end
        const QString end = said();
        QVERIFY(end.size() <= 600 && end.startsWith(u"line "_s) && end.contains(u"line 302"_s));
        m_view->setFocus(); // then the text itself is read
        writeLines(1);
        QCOMPARE(said(), QString());
        m_view->find();
        QWidget other;
        use(other);
        writeLines(1);
        QCOMPARE(said(), QString());
    }

private:
    void write(const QString& text)
    {
        m_view->setSelStart(m_view->TextLength());
        m_view->setSelText(text);
    }
    void writeLines(int count)
    {
        const qsizetype first = m_view->chatText().lineCount();
        for (qsizetype i = first; i < first + count; ++i) {
            // Some lines need several rows, some are higher: estimates of them are off.
            m_view->setSelFontSize(i % 9 == 0 ? 15 : 10);
            write("line "_L1 + QString::number(i) + u' ' +
                  u"iiiiiiiiiii WWWWWWWWWW "_s.repeated(i % 5) + "\r\n"_L1);
        }
    }
    // Until what has been written is shown.
    void settle() { QTRY_VERIFY(timers() == 0); }
    qsizetype timers() const
    {
        return QAbstractEventDispatcher::instance()->registeredTimers(m_view.get()).size();
    }
    QWidget* viewport() const { return m_view->viewport(); }
    QScrollBar& bar() const { return *m_view->verticalScrollBar(); }
    qsizetype position(const QString& text) const
    {
        return m_view->chatText().text(0, m_view->chatText().length()).indexOf(text);
    }
    // The left edge of the character at a position, in the viewport.
    QPoint before(qsizetype position) const
    {
        const QRect character = m_view->characterRect(position);
        return {character.left() + 1, character.center().y()};
    }
    QString selected() const { return m_view->SelText(); }
    QString readerSelected() const
    {
        return m_view->copiedText(m_view->readerSelection().start(),
                                  m_view->readerSelection().end());
    }
    QMenu* openMenu(QPoint place, QContextMenuEvent::Reason reason = QContextMenuEvent::Mouse)
    {
        delete m_view->findChild<QMenu*>();
        QContextMenuEvent event(reason, place, viewport()->mapToGlobal(place));
        QCoreApplication::sendEvent(viewport(), &event);
        return m_view->findChild<QMenu*>();
    }
    void use(QWidget& window)
    {
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
    }

    std::unique_ptr<ChatView> m_view;
};

QTEST_MAIN(ChatViewTest)
#include "tst_chatview.moc"
