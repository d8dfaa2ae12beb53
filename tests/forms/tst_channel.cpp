#include "common/SessionVariables.h"
#include "controls/SvgPicture.h"
#include "desktop/Channel.h"
#include "platform/Handlers.h"
#include "platform/Resources.h"
#include "platform/Twips.h"
#include "room/Room.h"
#include "room/TopicField.h"
#include "support/StandIns.h"
#include "support/TestSurroundings.h"
#include "text/OwnTextStyle.h"
#include "text/TextWriter.h"
#include "view/ReadableGround.h"

#include <QAccessible>
#include <QClipboard>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QMimeData>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace {

// The main window over the logic of its keys, with nobody on the line.
struct Desk final
{
    Desk()
    {
        room.ChannelName = u"#room"_s;
        variables.MyNick = u"me"_s;
        variables.FontName = u"Arial"_s;
        variables.FontSize = Int16(10);
        variables.MaxTextHistory = Int16(30);
        window.setKeyHooks({
            .topicKeyDown = [this](int code) { return topicField.KeyDown(code); },
            .topicKeyPress = [this](int character) { return topicField.KeyPress(character); },
            .inputKeyDown = [this](int code) { return inputLine.KeyDown(code); },
            .inputKeyPress = [this](int character) { return inputLine.KeyPress(character); },
        });
    }

    TestSurroundings around{u"127.0.0.1"_s};
    QStringList fatal;
    Handlers handlers{[this](const QString& text) { fatal += text; }};
    Channel window{handlers, around.dialogs, nullptr};
    SessionVariables variables;
    OwnTextStyle style;
    Server server;
    Room room{window};
    TextWriter writer{variables};
    TopicField topicField{room, server};
    InputLine inputLine{{variables, style, room, window, server, writer, around.dialogs}};
};

} // namespace

// The main window: its menus and pages, and what real keys and clicks do in it.
class ChannelTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { loadResources(); }
    void init();
    void cleanup();

    void tabs();
    void smallestSize();

    void topicLock_data();
    void topicLock();
    void topicGoesOutOnEnter();
    void topicIsOneLine();
    void longTopicFades();
    void paleColorOfTheInputHasAGround();
    void clickWithoutSelectionLeadsToTheInput();

    void inputKeepsToItsLength();
    void pastedLineEndsSendNothing();
    void notesAboveTheInput_data();
    void notesAboveTheInput();
    void tabCompletesNames();
    void historyKeys();
    void keysOfTheInputWorkOnTheView();
    void lettersTypedInTheViewGoToTheInput();
    void keysZoomWhatIsPainted();
    void styleBoxes();
    void sendPicture();
    void failingKeyIsFatal();

    void rightButtonSelectsNothing();

private:
    template<typename T>
    T* control(const QString& name) const
    {
        T* found = m_desk->window.findChild<T*>(name);
        Q_ASSERT(found);
        return found;
    }
    QLineEdit* input() const { return control<QLineEdit>(u"DataOut"_s); }
    QWidget* topicEdit() const { return control<QWidget>(u"rtbTopic"_s); }
    void click(const QWidget* target, Qt::MouseButton button = Qt::LeftButton,
               QPoint at = {-1, -1}) const;
    ChatView& view() const { return *control<ChatView>(u"DataIn"_s); }
    void fillView() const
    {
        for (int i = 0; i < 300; ++i)
            m_desk->writer.WriteView(view(), "line "_L1 + QString::number(i));
    }
    void setTopic(const QString& text) const { m_desk->window.rtbTopic().setText(text); }
    QPoint middleOfRow(int row) const;

    std::unique_ptr<Desk> m_desk;
};

void ChannelTest::init()
{
    m_desk = std::make_unique<Desk>();
    m_desk->window.Show();
    QVERIFY(QTest::qWaitForWindowActive(&m_desk->window));
    QGuiApplication::clipboard()->clear();
}

void ChannelTest::cleanup()
{
    const QStringList fatal = m_desk->fatal;
    m_desk.reset();
    QCOMPARE(fatal, QStringList()); // whoever wants one takes it
}

// As the pointer meets the window, so that it is the control on top that gets it.
void ChannelTest::click(const QWidget* target, Qt::MouseButton button, QPoint at) const
{
    if (at == QPoint(-1, -1))
        at = target->rect().center();
    QTest::mouseClick(m_desk->window.windowHandle(), button, {},
                      target->mapTo(&m_desk->window, at));
}

QPoint ChannelTest::middleOfRow(int row) const
{
    const ListBoxWidget& rows = m_desk->window.nickRows();
    return rows.viewport()->mapTo(&rows, rows.visualItemRect(rows.item(row)).center());
}

// By a click, by a key, and by the routines of the session, which take the tab along.
void ChannelTest::tabs()
{
    Channel& window = m_desk->window;
    auto* home = new QWidget;
    auto* misc = new QWidget;
    window.setWebPages(home, misc);
    auto* tabs = control<QTabBar>(u"TBar"_s);
    const auto shown = [&] {
        QString pages = tabs->tabText(tabs->currentIndex()) + u':';
        pages += home->isVisible() ? " home"_L1 : ""_L1;
        pages += misc->isVisible() ? " misc"_L1 : ""_L1;
        for (const char* name : {"rtbTopic", "DataIn", "DataOut", "lstNicks", "Check3", "Label4"})
            pages += control<QWidget>(QLatin1StringView(name))->isVisible() ? " x"_L1 : ""_L1;
        return pages;
    };
    const QStringList pages{u"Home: home"_s, u"ChatRoom: x x x x x x"_s, u"Misc: misc"_s};
    QCOMPARE(shown(), pages[1]);
    const std::array routines{&Channel::myHome, &Channel::myChatRoom, &Channel::myMisc};
    for (const int page : {2, 1, 0}) {
        QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(page).center());
        QCOMPARE(shown(), pages[page]);
    }
    for (const int page : {2, 1, 0}) {
        QTest::keyClick(tabs, static_cast<Qt::Key>(Qt::Key_1 + page), Qt::ControlModifier);
        QCOMPARE(shown(), pages[page]);
    }
    for (const int page : {2, 1, 0}) {
        (window.*routines[static_cast<std::size_t>(page)])();
        QCOMPARE(shown(), pages[page]);
    }
}

void ChannelTest::smallestSize()
{
    QWidget& window = m_desk->window;
    window.resize(100, 100);
    QTRY_COMPARE(window.size(), QSize(767, 510)); // 11500 by 7650 twips at least
    // Everything still has its place.
    for (const QString& name : {u"rtbTopic"_s, u"DataIn"_s, u"DataOut"_s, u"lstNicks"_s,
                                u"Image2"_s, u"Label5"_s, u"cmdCount"_s}) {
        const auto* each = control<QWidget>(name);
        const QRect place(each->mapTo(&window, QPoint(0, 0)), each->size());
        QVERIFY2(window.rect().contains(place), qPrintable(name));
        QVERIFY2(place.width() > 20 && place.height() > 8, qPrintable(name));
    }
}

void ChannelTest::topicLock_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<QString>("unlocked"); // what becomes of "abc", with the caret at its start

    QTest::newRow("letter") << u"letter"_s << u"xabc"_s;
    QTest::newRow("Delete") << u"Delete"_s << u"bc"_s;
    QTest::newRow("Backspace") << u"End Backspace"_s << u"ab"_s;
    QTest::newRow("paste") << u"Ctrl+V"_s << u"two linesabc"_s;
    QTest::newRow("cut") << u"Ctrl+A Ctrl+X"_s << u""_s;
    QTest::newRow("input method") << u"compose"_s << u"éabc"_s;
    QTest::newRow("drop") << u"End drop"_s << u"abctwo lines"_s;
    QTest::newRow("Tab leaves") << u"Tab"_s << u"abc"_s;
    QTest::newRow("copy") << u"Ctrl+A Ctrl+C"_s << u"abc"_s;
}

void ChannelTest::topicLock()
{
    QFETCH(QString, action);
    for (const bool locked : {true, false}) {
        TopicField::setLocked(m_desk->window.rtbTopic(), locked);
        setTopic(u"abc"_s);
        QGuiApplication::clipboard()->setText(u"two\nlines"_s);
        QWidget* edit = topicEdit();
        edit->setFocus();
        QTest::keyClick(edit, Qt::Key_Home);
        for (const QString& step : action.split(u' ')) {
            if (step == "letter"_L1) {
                QTest::keyClick(edit, 'x');
            } else if (step == "compose"_L1) {
                QInputMethodEvent event;
                event.setCommitString(u"é"_s);
                QCoreApplication::sendEvent(edit, &event);
            } else if (step == "drop"_L1) {
                auto* viewport = edit->findChild<QWidget*>(u"qt_scrollarea_viewport"_s);
                QMimeData data;
                data.setText(u"two\nlines"_s);
                const QPoint at(viewport->width() - 4, viewport->height() / 2);
                QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, {});
                QCoreApplication::sendEvent(viewport, &enter);
                QDropEvent drop(at, Qt::CopyAction, &data, Qt::LeftButton, {});
                QCoreApplication::sendEvent(viewport, &drop);
            } else {
                const QKeyCombination keys = QKeySequence(step)[0];
                QTest::keyClick(edit, keys.key(), keys.keyboardModifiers());
            }
        }
        const QString text = m_desk->window.rtbTopic().Text();
        if (locked)
            QCOMPARE(text, u"abc"_s);
        else
            QTEST(text, "unlocked");
        QCOMPARE(m_desk->server.sent, QStringList());
    }
    if (action.endsWith("Ctrl+C"_L1))
        QCOMPARE(QGuiApplication::clipboard()->text(), u"abc"_s); // reading is always allowed
}

void ChannelTest::topicGoesOutOnEnter()
{
    TopicField::setLocked(m_desk->window.rtbTopic(), true);
    setTopic(u"old"_s);
    QWidget* edit = topicEdit();
    edit->setFocus();
    for (const auto key : {Qt::Key_Return, Qt::Key_Enter})
        QTest::keyClick(edit, key);
    QCOMPARE(m_desk->server.sent, QStringList());

    TopicField::setLocked(m_desk->window.rtbTopic(), false);
    QTest::keyClick(edit, Qt::Key_End);
    QTest::keyClicks(edit, u" and new"_s);
    QTest::keyClick(edit, Qt::Key_Return);
    QTest::keyClick(edit, Qt::Key_Enter);
    QTest::keyClick(edit, Qt::Key_Return, Qt::ShiftModifier);
    QCOMPARE(m_desk->server.sent, QStringList(3, u"TOPIC #room :old and new"_s));
    QCOMPARE(m_desk->window.rtbTopic().Text(), u"old and new"_s); // no line break
}

void ChannelTest::topicIsOneLine()
{
    // The writer leaves a line end behind the text. No key leads there.
    TopicField::setLocked(m_desk->window.rtbTopic(), false);
    QWidget* edit = topicEdit();
    for (const QString& keys : {u"Home"_s, u"End"_s, u"Down"_s, u"Ctrl+End"_s, u"End Right"_s}) {
        TopicField::show(m_desk->window.rtbTopic(), m_desk->writer, u"xabc"_s);
        edit->setFocus();
        QTest::keyClick(edit, '>'); // where the caret stands by itself
        for (const QString& step : keys.split(u' ')) {
            const QKeyCombination key = QKeySequence(step)[0];
            QTest::keyClick(edit, key.key(), key.keyboardModifiers());
        }
        QTest::keyClick(edit, '!');
        QTest::keyClick(edit, Qt::Key_Return);
        QCOMPARE(m_desk->server.sent.takeFirst(),
                 QString(keys == "Home"_L1 ? u"TOPIC #room :!>abc "_s : u"TOPIC #room :>abc !"_s));
    }
}

void ChannelTest::longTopicFades()
{
    const auto lightAtTheEdge = [this] {
        const QWidget* edit = topicEdit();
        const QImage shown = topicEdit()->grab().toImage();
        int darkest = 255;
        for (int x = edit->width() - 8; x < edit->width() - 3; ++x) {
            for (int y = 5; y < edit->height() - 5; ++y)
                darkest = std::min(darkest, qGray(shown.pixel(x, y)));
        }
        return darkest > 200;
    };
    const auto hint = [this] {
        const QWidget* edit = topicEdit();
        QHelpEvent event(QEvent::ToolTip, {20, 10}, edit->mapToGlobal(QPoint(20, 10)));
        QCoreApplication::sendEvent(static_cast<QAbstractScrollArea*>(topicEdit())->viewport(),
                                    &event);
        return QToolTip::text();
    };
    setTopic(u"short"_s);
    QTRY_VERIFY(lightAtTheEdge());
    QCOMPARE(hint(), QString());
    setTopic(u"MMM <b>"_s.repeated(100));
    QTRY_VERIFY(lightAtTheEdge());
    QVERIFY(hint().contains(u"MMM &lt;b&gt;"_s));
    QToolTip::hideText();
}

void ChannelTest::paleColorOfTheInputHasAGround()
{
    m_desk->window.setStyleSheet(u"QLineEdit { background: white }"_s); // as the theme has it
    const auto shows = [this](const QColor& color) {
        const QImage line = input()->grab().toImage();
        for (int x = 0; x < line.width(); ++x) {
            for (int y = 0; y < line.height(); ++y) {
                if (line.pixelColor(x, y) == color)
                    return true;
            }
        }
        return false;
    };
    const QColor yellow(255, 255, 0);
    const QColor ground = readableGround(yellow.rgb(), qRgb(255, 255, 255));
    QTest::keyClicks(input(), u"MMMM"_s);
    for (const bool pale : {true, false, true}) {
        m_desk->window.setInputColor(pale ? yellow : QColor(Qt::black));
        QCOMPARE(m_desk->window.inputColor(), pale ? yellow : QColor(Qt::black));
        QCOMPARE(shows(ground), pale);
        QVERIFY(shows(m_desk->window.inputColor()));
    }
}

void ChannelTest::clickWithoutSelectionLeadsToTheInput()
{
    QWindow* window = m_desk->window.windowHandle();
    for (const QString& name : {u"DataIn"_s, u"rtbTopic"_s}) {
        auto* view = control<QWidget>(name);
        auto& text = dynamic_cast<RichTextBox&>(*view);
        text.setText(u"some words to select"_s);
        control<QWidget>(u"lstNicks"_s)->setFocus();
        const QPoint first(12, 14);
        click(view, Qt::LeftButton, first);
        QVERIFY(input()->hasFocus());

        // Whoever has selected something is left to copy it.
        const QPoint from = view->mapTo(&m_desk->window, first);
        QTest::mousePress(window, Qt::LeftButton, {}, from);
        QTest::mouseMove(window, from + QPoint(20, 0));
        QTest::mouseMove(window, from + QPoint(60, 0));
        QTest::mouseRelease(window, Qt::LeftButton, {}, from + QPoint(60, 0));
        QVERIFY(text.SelLength() > 0);
        QVERIFY(!input()->hasFocus());
    }
}

void ChannelTest::inputKeepsToItsLength()
{
    QGuiApplication::clipboard()->setText(QString(1200, u'x'));
    QTest::keyClick(input(), Qt::Key_V, Qt::ControlModifier);
    QTest::keyClick(input(), 'y');
    QCOMPARE(input()->text(), QString(1100, u'x'));
}

void ChannelTest::pastedLineEndsSendNothing()
{
    for (const QString& lines : {u"hi\nQUIT :gone"_s, u"hi\r\nQUIT :gone"_s, u"hi\rQUIT :gone"_s}) {
        QGuiApplication::clipboard()->setText(lines);
        QTest::keyClick(input(), Qt::Key_V, Qt::ControlModifier);
        QTest::keyClick(input(), Qt::Key_Return);
        QCOMPARE(m_desk->server.sent.size(), 1);
        const QString line = m_desk->server.sent.takeFirst();
        QVERIFY(line.startsWith(u"PRIVMSG #room :\x03"
                                "1 hi"_s));
        QVERIFY(!line.contains(u'\n') && !line.contains(u'\r'));
    }
}

void ChannelTest::notesAboveTheInput_data()
{
    QTest::addColumn<QString>("pasted");
    QTest::addColumn<QString>("note"); // its beginning

    QTest::newRow("nothing to say") << u"hello / you"_s << QString();
    QTest::newRow("slash") << u"/id mysecret"_s << u"Everybody in the room will read this"_s;
    QTest::newRow("slash behind blanks") << u"  /me"_s << u"Everybody in the room will read this"_s;
    QTest::newRow("joined lines") << u"one\ntwo"_s << u"The lines of what you put in were joined"_s;
    QTest::newRow("short enough") << QString(399, u'x') << QString();
    QTest::newRow("long") << QString(400, u'x') << u"700 characters left."_s;
}

void ChannelTest::notesAboveTheInput()
{
    QFETCH(QString, pasted);
    QFETCH(QString, note);
    QGuiApplication::clipboard()->setText(pasted);
    QTest::keyClick(input(), Qt::Key_V, Qt::ControlModifier);
    const auto* notes = control<QLabel>(u"notes"_s);
    QCOMPARE(notes->isVisible(), !note.isEmpty());
    QVERIFY2(notes->text().startsWith(note), qPrintable(notes->text()));
    input()->clear();
    QVERIFY(!notes->isVisible());
}

void ChannelTest::tabCompletesNames()
{
    for (const char* row : {"@anna", "Andy", "bob", "andrea"})
        m_desk->window.lstNicks().AddItem(QLatin1StringView(row));
    m_desk->writer.WriteView(m_desk->window.DataIn(), u"<andrea> hi"_s);
    m_desk->writer.WriteView(m_desk->window.DataIn(), u"Andy waves"_s);
    const auto press = [this](Qt::Key key) {
        QTest::keyClick(input(), key);
        return input()->text();
    };

    QTest::keyClicks(input(), u"an"_s);
    QCOMPARE(press(Qt::Key_Tab), u"Andy: "_s); // spoke last
    QCOMPARE(press(Qt::Key_Tab), u"andrea: "_s);
    QCOMPARE(press(Qt::Key_Tab), u"anna: "_s);
    QCOMPARE(press(Qt::Key_Tab), u"Andy: "_s);
    QCOMPARE(press(Qt::Key_Backtab), u"anna: "_s);
    QTest::keyClicks(input(), u"see B"_s);
    QCOMPARE(press(Qt::Key_Tab), u"anna: see bob "_s);

    // Between other words, with a blank there already.
    input()->setText(u"well bo or not"_s);
    input()->setCursorPosition(7);
    QCOMPARE(press(Qt::Key_Tab), u"well bob or not"_s);
    QCOMPARE(input()->cursorPosition(), 9);

    QTest::keyClicks(input(), u"zzz"_s);
    const QString unknown = input()->text();
    QCOMPARE(press(Qt::Key_Tab), unknown);
    QVERIFY(!input()->hasFocus()); // nothing fits: the key leads on
    QCOMPARE(m_desk->server.sent, QStringList());
}

void ChannelTest::historyKeys()
{
    for (const QString& text : {u"a"_s, u"b"_s}) {
        QTest::keyClicks(input(), text);
        QTest::keyClick(input(), Qt::Key_Return);
    }
    QString seen;
    for (const auto key : {Qt::Key_Up, Qt::Key_Up, Qt::Key_Up, Qt::Key_Down, Qt::Key_Down}) {
        QTest::keyClick(input(), key);
        seen += input()->text() + QString::number(m_desk->around.dialogs.beeps);
    }
    QCOMPARE(seen, u"b0a0a1b1b2"_s);
}

void ChannelTest::keysOfTheInputWorkOnTheView()
{
    fillView();
    const auto press = [this](Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(input(), key, modifiers);
    };
    const auto* bar = view().verticalScrollBar();
    QTRY_VERIFY(bar->maximum() > 0);
    press(Qt::Key_PageUp);
    QVERIFY(!view().isFollowing());
    press(Qt::Key_PageDown);
    QVERIFY(view().isFollowing());
    press(Qt::Key_Home, Qt::ControlModifier);
    QTRY_COMPARE(bar->value(), 0);
    press(Qt::Key_End, Qt::ControlModifier);
    QVERIFY(view().isFollowing());

    press(Qt::Key_PageUp);
    QTest::keyClicks(input(), u"my own"_s);
    QVERIFY(!view().isFollowing());
    press(Qt::Key_Return);
    QVERIFY(view().isFollowing()); // to see it

    QTest::keyClicks(input(), u"typed"_s);
    view().selectForReader(0, 4);
    press(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), u"line"_s);
    input()->selectAll();
    press(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), u"typed"_s);

    auto* find = control<QLineEdit>(u"findText"_s);
    press(Qt::Key_F, Qt::ControlModifier);
    QVERIFY(find->isVisible() && find->hasFocus());
}

void ChannelTest::lettersTypedInTheViewGoToTheInput()
{
    view().setFocus();
    QTest::keyClick(&view(), Qt::Key_Left);
    QTest::keyClick(&view(), Qt::Key_X, Qt::AltModifier);
    QVERIFY(view().hasFocus());
    QTest::keyClicks(&view(), u"h"_s);
    QVERIFY(input()->hasFocus());
    view().setFocus();
    QGuiApplication::clipboard()->setText(u"ey"_s);
    QTest::keyClick(&view(), Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(input()->text(), u"hey"_s);
}

void ChannelTest::keysZoomWhatIsPainted()
{
    fillView();
    const auto height = [this] { return view().characterRect(0).height(); };
    const int natural = height();
    for (int i = 0; i < 5; ++i)
        QTest::keyClick(input(), Qt::Key_Plus, Qt::ControlModifier);
    QVERIFY(height() > natural * 1.3);
    QCOMPARE(view().styleAt(0).fontSize, 10);
    for (int i = 0; i < 8; ++i)
        QTest::keyClick(&view(), Qt::Key_Minus, Qt::ControlModifier);
    QVERIFY(height() < natural);
    QTest::keyClick(input(), Qt::Key_0, Qt::ControlModifier);
    QCOMPARE(height(), natural);
}

void ChannelTest::styleBoxes()
{
    for (const QString& name : {u"Check3"_s, u"Check4"_s}) {
        auto* box = control<QCheckBox>(name);
        click(box, Qt::LeftButton, {8, box->height() / 2});
        QVERIFY(box->isChecked());
    }
    QTest::keyClick(input(), 'x'); // each key sets the typeface anew, the style stays
    QVERIFY(input()->font().bold() && input()->font().underline());
    QCOMPARE(input()->font().families(), QStringList{u"Arial"_s});
    QCOMPARE(input()->font().pointSize(), 10);
    m_desk->variables.FontName = u"Courier"_s;
    QInputMethodEvent composed;
    composed.setCommitString(u"y"_s); // a key that the input method has taken for itself
    QApplication::sendEvent(input(), &composed);
    QCOMPARE(input()->font().families(), QStringList{u"Courier"_s});
    click(control<QWidget>(u"Check3"_s), Qt::LeftButton, {8, 8});
    QVERIFY(!input()->font().bold() && input()->font().underline());
}

void ChannelTest::sendPicture()
{
    auto* picture = control<QWidget>(u"Image2"_s);
    click(picture);
    QCOMPARE(m_desk->server.sent, QStringList());
    QTest::keyClicks(input(), u"hi"_s);
    click(picture);
    QCOMPARE(m_desk->server.sent, QStringList{u"PRIVMSG #room :\x03"
                                              "1 hi"_s});
    QCOMPARE(input()->text(), QString());

    QAccessibleInterface* button = QAccessible::queryAccessibleInterface(picture);
    QCOMPARE(button->role(), QAccessible::Button);
    QCOMPARE(button->text(QAccessible::Name), u"Send"_s);
    QTest::keyClicks(input(), u"by reader"_s);
    button->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QTest::keyClicks(input(), u"by key"_s);
    QTest::keyClick(input(), Qt::Key_Tab);
    QVERIFY(picture->hasFocus());
    QTest::keyClick(picture, Qt::Key_Space);
    QCOMPARE(m_desk->server.sent.size(), 3);
}

void ChannelTest::failingKeyIsFatal()
{
    m_desk->variables.MaxTextHistory = Int16(-1);
    QTest::keyClicks(input(), u"hi"_s);
    QTest::keyClick(input(), Qt::Key_Return);
    QCOMPARE(std::exchange(m_desk->fatal, {}),
             QStringList{u"Run-time error '9':\n\nSubscript out of range"_s});
}

void ChannelTest::rightButtonSelectsNothing()
{
    Channel& window = m_desk->window;
    for (const QString& nick : {u"@ann"_s, u"bob"_s, u"cleo"_s})
        window.lstNicks().AddItem(nick);
    const QSignalSpy asked(&window, &Channel::lstNicks_RightButtonDown);
    const QSignalSpy used(&window, &Channel::lstNicks_DblClick);
    const auto* rows = &window.nickRows();
    click(rows, Qt::RightButton, middleOfRow(1));
    QCOMPARE(window.lstNicks().ListIndex(), -1);
    click(rows, Qt::LeftButton, middleOfRow(0));
    QCOMPARE(window.lstNicks().Text(), u"@ann"_s);
    click(rows, Qt::RightButton, middleOfRow(2));
    QCOMPARE(window.lstNicks().Text(), u"@ann"_s);
    QCOMPARE(asked.count(), 2);
    QCOMPARE(asked.at(1).at(0).toPoint(), rows->mapToGlobal(middleOfRow(2)));
    QTest::mouseDClick(window.windowHandle(), Qt::RightButton, {},
                       rows->mapTo(&window, middleOfRow(2)));
    QCOMPARE(used.count(), 0);
}

QTEST_MAIN(ChannelTest)
#include "tst_channel.moc"
