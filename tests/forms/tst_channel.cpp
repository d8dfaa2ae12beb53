#include "controls/SvgPicture.h"
#include "desktop/Channel.h"
#include "platform/Resources.h"
#include "platform/Twips.h"
#include "room/Room.h"
#include "support/RecordingDesk.h"
#include "support/TestSurroundings.h"
#include "view/ViewLook.h"

#include <QtTest>
#include <QtWidgets>

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

// The main window: its pages, and what real keys and clicks do in it.
class ChannelTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        loadResources();
        m_script.afterLook = [this](const QString& look) {
            if (look == "sent"_L1)
                m_desk->server.sent.clear();
        };
    }
    void init()
    {
        m_desk = std::make_unique<Desk>();
        m_desk->window.Show();
        QVERIFY(QTest::qWaitForWindowActive(&m_desk->window));
        QGuiApplication::clipboard()->clear();
    }
    void cleanup()
    {
        const QStringList fatal = m_desk->fatal;
        m_desk.reset();
        QCOMPARE(fatal, QStringList()); // whoever wants one takes it
    }

    void uses_data()
    {
        const Scenes row;

        row("tabs by clicks", u"?page ChatRoom: x x x x x x|tab 2|?page Misc: misc|tab 1|"
                              "?page ChatRoom: x x x x x x|tab 0|?page Home: home"_s);
        row("tabs by keys", u"in DataOut|keys Ctrl+3|?page Misc: misc|keys Ctrl+2|"
                            "?page ChatRoom: x x x x x x|keys Ctrl+1|?page Home: home|?input "_s);

        row("topic goes out on Enter",
            u"lock|topic old|in rtbTopic|keys Return Enter|?sent |unlock|keys End|type  and new|"
            "keys Return|?sent TOPIC #room :old and new|keys Enter|?sent TOPIC #room :old and new|"
            "keys Shift+Return|?sent TOPIC #room :old and new|?topic old and new"_s);
        // The writer leaves a line end behind the text. No key leads there.
        for (const QString& keys : {u"Home"_s, u"End"_s, u"Down"_s, u"Ctrl+End"_s, u"End Right"_s})
            row(qPrintable("topic is one line, "_L1 + keys),
                "unlock|show xabc|in rtbTopic|type >|keys "_L1 + keys + "|type !|keys Return|"_L1 +
                    (keys == "Home"_L1 ? "?sent TOPIC #room :!>abc "_L1
                                       : "?sent TOPIC #room :>abc !"_L1));
        row("click in the topic", u"topic some words|in lstNicks|click rtbTopic|?focus DataOut"_s);
        row("click in the conversation",
            u"line some words|in lstNicks|click DataIn|?focus DataOut"_s);
        // Whoever has selected something is left to copy it.
        row("drag in the topic", u"topic some words|drag rtbTopic|?focus rtbTopic"_s);
        row("drag in the conversation", u"line some words|drag DataIn|?focus DataIn"_s);

        row("longest line", "clip "_L1 + QString(1200, u'x') +
                                "|in DataOut|keys Ctrl+V|type y|"_L1 + "?input "_L1 +
                                QString(1100, u'x'));
        for (const char* end : {"\n", "\r\n", "\r"})
            row("pasted line ends", "clip hi"_L1 + QLatin1StringView(end) +
                                        "QUIT :x|in DataOut|keys Ctrl+V Return|"
                                        "?sent PRIVMSG #room :{C}1 hi QUIT :x"_L1);
        const auto aloud =
            "Everybody in the room will read this: no command here begins with \"/\". What you can "
            "do "
            "is in the menus and under the right button on a name; a password belongs in the "
            "sign-in form or under File, Register."_L1;
        for (
            const auto& [pasted, note] : {
                std::pair(u"hello / you"_s, ""_L1),
                std::pair(u"/id mysecret"_s, aloud),
                std::pair(u"  /me"_s, aloud),
                std::pair(u"one\ntwo"_s, "The lines of what you put in were joined into one."_L1),
                std::pair(QString(399, u'x'), ""_L1),
                std::pair(
                    QString(400, u'x'),
                    "700 characters left. What stands behind the first 430 or so may be cut off on the way."_L1),
            })
            row(qPrintable("note, "_L1 + QString::number(pasted.size())),
                "clip "_L1 + pasted + "|in DataOut|keys Ctrl+V|?notes "_L1 + note +
                    "|text |?notes "_L1);
        row("Tab completes names, the last speaker's first",
            u"rows @anna Andy bob andrea|line <andrea> hi|line Andy waves|in DataOut|type an|"
            "keys Tab|?input Andy: |keys Tab|?input andrea: |keys Tab|?input anna: |keys Tab|"
            "?input Andy: |keys Backtab|?input anna: |type see B|keys Tab|"
            "?input anna: see bob |?sent "_s);
        row("Tab between other words, with a blank there already",
            u"rows bob|in DataOut|text well bo or not|caret 7|keys Tab|?input well bob or not|"
            "?caret 9|type zzz|keys Tab|?input well bob zzzor not|?focus Image2"_s);
        row("history", u"in DataOut|type a|keys Return|type b|keys Return Up|?input b|keys Up|"
                       "?input a|?beeps 0|keys Up|?input a|?beeps 1|keys Down|?input b|keys Down|"
                       "?input b|?beeps 2"_s);
        row("keys of the input work on the view",
            u"fill|in DataOut|keys PgUp|?view up|keys PgDown|?view follows|keys Ctrl+Home|"
            "?view top|keys Ctrl+End|?view follows|keys PgUp|type my own|?view up|keys Return|"
            "?view follows"_s);
        row("keys of the input zoom the view",
            u"in DataOut|keys Ctrl++ Ctrl++|?zoom 120|keys Ctrl+-|?zoom 110|keys Ctrl+0|?zoom 100"_s);
        row("copying", u"line words|mark 0 4|in DataOut|type typed|keys Ctrl+C|?clip word|"
                       "keys Ctrl+A Ctrl+C|?clip typed"_s);
        row("finding", u"in DataOut|keys Ctrl+F|?focus findText"_s);
        row("letters typed in the view go to the input",
            u"in DataIn|keys Left Alt+X|?focus DataIn|type h|?focus DataOut|in DataIn|clip ey|"
            "keys Ctrl+V|?input hey"_s);
        // Each key sets the typeface anew, and one that the input method takes for itself, too.
        row("style boxes",
            u"click Check3|click Check4|in DataOut|type x|"
            "?font bold underline Arial 10|face Courier|compose y|"
            "?font bold underline Courier 10|click Check3|?font underline Courier 10|"
            "points -3|in DataOut|type z|?font underline Courier 1"_s);
        row("picture that sends",
            u"click Image2|?sent |in DataOut|type hi|click Image2|?sent PRIVMSG #room :{C}1 hi|"
            "?input |type by key|keys Tab|?focus Image2|keys Space|"
            "?sent PRIVMSG #room :{C}1 by key|in DataOut|type by reader|press Image2|"
            "?sent PRIVMSG #room :{C}1 by reader"_s);
    }
    void uses()
    {
        QFETCH(QString, script);
        m_desk->window.setWebPages(m_home = new QWidget, m_misc = new QWidget);
        play(script);
    }

    void topicLock_data()
    {
        QTest::addColumn<QString>("steps");
        QTest::addColumn<QString>("unlocked"); // what becomes of "abc", with the caret at its start

        QTest::newRow("letter") << u"type x"_s << u"xabc"_s;
        QTest::newRow("Delete") << u"keys Delete"_s << u"bc"_s;
        QTest::newRow("Backspace") << u"keys End Backspace"_s << u"ab"_s;
        QTest::newRow("word") << u"keys End Ctrl+Backspace"_s << u""_s;
        QTest::newRow("over a selection") << u"keys Ctrl+A|type x"_s << u"x"_s;
        QTest::newRow("paste") << u"keys Ctrl+V"_s << u"two linesabc"_s;
        QTest::newRow("cut") << u"keys Ctrl+A Ctrl+X"_s << u""_s;
        QTest::newRow("input method") << u"compose \u00e9"_s << u"\u00e9abc"_s;
        QTest::newRow("drop") << u"drop two\nlines"_s << u"abctwo lines"_s;
        QTest::newRow("Tab leaves") << u"keys Tab"_s << u"abc"_s;
        QTest::newRow("copy") << u"keys Ctrl+A Ctrl+C|?clip abc"_s << u"abc"_s;
    }
    void topicLock()
    {
        QFETCH(QString, steps);
        QFETCH(QString, unlocked);
        const QString before = u"|topic abc|clip two\nlines|in rtbTopic|keys Home|"_s;
        play("lock"_L1 + before + steps + "|?topic abc|?sent "_L1);
        play("unlock"_L1 + before + steps + "|?topic "_L1 + unlocked + "|?sent "_L1);
    }

    void hintIsTheWholeTopic()
    {
        const auto hint = [this] {
            const QWidget* edit = topicEdit();
            QHelpEvent event(QEvent::ToolTip, {20, 10}, edit->mapToGlobal(QPoint(20, 10)));
            QCoreApplication::sendEvent(static_cast<QAbstractScrollArea*>(topicEdit())->viewport(),
                                        &event);
            return QToolTip::text();
        };
        setTopic(u"short"_s);
        QCOMPARE(hint(), QString());
        setTopic(u"MMM<b>"_s.repeated(100));
        QCOMPARE(hint(), QString("<p>"_L1 + u"MMM&lt;b&gt;"_s.repeated(100) + "</p>"_L1));
        QToolTip::hideText();
    }

    void failingKeyIsFatal()
    {
        m_desk->variables.MaxTextHistory = Int16(-1);
        QTest::keyClicks(input(), u"hi"_s);
        QTest::keyClick(input(), Qt::Key_Return);
        QCOMPARE(std::exchange(m_desk->fatal, {}),
                 QStringList{u"Run-time error '9':\n\nSubscript out of range"_s});
    }

    // The right button selects nothing.
    void selection()
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

        window.lstNicks().AddItem(u"@abe"_s);
        QCOMPARE(window.lstNicks().Text(), u"@ann"_s);
        window.lstNicks().RemoveItem(0);
        QCOMPARE(window.lstNicks().Text(), u"@ann"_s);
        window.lstNicks().RemoveItem(0);
        QCOMPARE(window.lstNicks().ListIndex(), -1);
    }

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
    ChatView& view() const { return *control<ChatView>(u"DataIn"_s); }
    void setTopic(const QString& text) const { m_desk->window.rtbTopic().setText(text); }
    void fillView() const
    {
        for (int i = 0; i < 300; ++i)
            m_desk->writer.WriteView(view(), "line "_L1 + QString::number(i));
        QTRY_VERIFY(view().verticalScrollBar()->maximum() > 0);
    }
    // As the pointer meets the window, so that it is the control on top that gets it.
    void click(const QWidget* target, Qt::MouseButton button, QPoint at) const
    {
        QTest::mouseClick(m_desk->window.windowHandle(), button, {},
                          target->mapTo(&m_desk->window, at));
    }
    QPoint middleOfRow(int row) const
    {
        const ListBoxWidget& rows = m_desk->window.nickRows();
        return rows.viewport()->mapTo(&rows, rows.visualItemRect(rows.item(row)).center());
    }
    void drag(const QWidget* target) const
    {
        QWindow* window = m_desk->window.windowHandle();
        const QPoint from = target->mapTo(&m_desk->window, QPoint(12, 14));
        QTest::mousePress(window, Qt::LeftButton, {}, from);
        QTest::mouseMove(window, from + QPoint(20, 0));
        QTest::mouseMove(window, from + QPoint(60, 0));
        QTest::mouseRelease(window, Qt::LeftButton, {}, from + QPoint(60, 0));
    }
    void drop(const QString& text) const
    {
        auto* viewport = topicEdit()->findChild<QWidget*>(u"qt_scrollarea_viewport"_s);
        QMimeData data;
        data.setText(text);
        const QPoint at(viewport->width() - 4, viewport->height() / 2);
        QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(viewport, &enter);
        QDropEvent drop(at, Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(viewport, &drop);
    }
    QString shownPage() const
    {
        const auto* tabs = control<QTabBar>(u"TBar"_s);
        QString pages = tabs->tabText(tabs->currentIndex()) + u':';
        pages += m_home->isVisible() ? " home"_L1 : ""_L1;
        pages += m_misc->isVisible() ? " misc"_L1 : ""_L1;
        for (const char* name : {"rtbTopic", "DataIn", "DataOut", "lstNicks", "Check3", "Label4"})
            pages += control<QWidget>(QLatin1StringView(name))->isVisible() ? " x"_L1 : ""_L1;
        return pages;
    }
    QString fontOfInput() const
    {
        const QFont font = input()->font();
        return (font.bold() ? "bold "_L1 : ""_L1) + (font.underline() ? "underline "_L1 : ""_L1) +
               font.families().join(u' ') + u' ' + QString::number(font.pointSize());
    }

    void play(const QString& script) { m_script.play(RecordingDesk::coded(script)); }

    std::unique_ptr<Desk> m_desk;
    QWidget* m_home = nullptr; // pages
    QWidget* m_misc = nullptr;
    Script m_script{
        {
            {u"in"_s, [this](const QString& name) { control<QWidget>(name)->setFocus(); }},
            {u"click"_s,
             [this](const QString& name) {
                 click(control<QWidget>(name), Qt::LeftButton, {12, 14});
             }},
            {u"drag"_s, [this](const QString& name) { drag(control<QWidget>(name)); }},
            {u"press"_s,
             [this](const QString& name) {
                 QAccessibleInterface* button =
                     QAccessible::queryAccessibleInterface(control<QWidget>(name));
                 button->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
             }},
            {u"type"_s,
             [this](const QString& text) { QTest::keyClicks(m_desk->window.focusWidget(), text); }},
            {u"keys"_s,
             [this](const QString& names) { pressKeys(m_desk->window.focusWidget(), names); }},
            {u"compose"_s,
             [this](const QString& text) {
                 QInputMethodEvent event;
                 event.setCommitString(text);
                 QCoreApplication::sendEvent(m_desk->window.focusWidget(), &event);
             }},
            {u"drop"_s,
             [this](const QString& text) {
                 QTest::keyClick(topicEdit(), Qt::Key_End);
                 drop(text);
             }},
            {u"clip"_s, [](const QString& text) { QGuiApplication::clipboard()->setText(text); }},
            {u"lock"_s, [this](auto) { TopicField::setLocked(m_desk->window.rtbTopic(), true); }},
            {u"unlock"_s,
             [this](auto) { TopicField::setLocked(m_desk->window.rtbTopic(), false); }},
            {u"topic"_s, [this](const QString& text) { setTopic(text); }},
            {u"show"_s,
             [this](const QString& text) {
                 TopicField::show(m_desk->window.rtbTopic(), m_desk->writer, text);
             }},
            {u"line"_s, [this](const QString& text) { m_desk->writer.WriteView(view(), text); }},
            {u"fill"_s, [this](auto) { fillView(); }},
            {u"mark"_s,
             [this](const QString& range) {
                 view().selectForReader(range.section(u' ', 0, 0).toInt(),
                                        range.section(u' ', 1).toInt());
             }},
            {u"rows"_s,
             [this](const QString& names) {
                 for (const QString& name : names.split(u' '))
                     m_desk->window.lstNicks().AddItem(name);
             }},
            {u"text"_s, [this](const QString& text) { input()->setText(text); }},
            {u"caret"_s, [this](const QString& at) { input()->setCursorPosition(at.toInt()); }},
            {u"points"_s,
             [this](const QString& size) { m_desk->variables.FontSize = Int16(size.toInt()); }},
            {u"face"_s, [this](const QString& name) { m_desk->variables.FontName = name; }},
            {u"tab"_s,
             [this](const QString& page) {
                 auto* tabs = control<QTabBar>(u"TBar"_s);
                 QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(page.toInt()).center());
             }},
        },
        {
            {u"sent"_s, [this] { return m_desk->server.sent.join(u'\n'); }},
            {u"topic"_s, [this] { return m_desk->window.rtbTopic().Text(); }},
            {u"input"_s, [this] { return input()->text(); }},
            {u"caret"_s, [this] { return QString::number(input()->cursorPosition()); }},
            {u"focus"_s, [this] { return m_desk->window.focusWidget()->objectName(); }},
            {u"notes"_s,
             [this] {
                 const auto* notes = control<QLabel>(u"notes"_s);
                 return notes->isVisible() ? notes->text() : QString();
             }},
            {u"beeps"_s, [this] { return QString::number(m_desk->around.dialogs.beeps); }},
            {u"clip"_s, [] { return QGuiApplication::clipboard()->text(); }},
            {u"font"_s, [this] { return fontOfInput(); }},
            {u"zoom"_s, [this] { return QString::number(qRound(view().look().zoom() * 100)); }},
            {u"page"_s, [this] { return shownPage(); }},
            {u"view"_s,
             [this] {
                 const bool isTop = view().verticalScrollBar()->value() == 0;
                 return view().isFollowing() ? u"follows"_s : isTop ? u"top"_s : u"up"_s;
             }},
        }};
};

QTEST_MAIN(ChannelTest)
#include "tst_channel.moc"
