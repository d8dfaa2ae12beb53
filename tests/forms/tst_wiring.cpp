#include "controls/SvgPicture.h"
#include "desktop/LineLock.h"
#include "desktop/SitePages.h"
#include "platform/Resources.h"
#include "support/FakeEngine.h"
#include "support/RecordingDesk.h"
#include "support/Script.h"
#include "support/TestClient.h"

#include <QtTest>
#include <QtWidgets>

using namespace Qt::StringLiterals;

namespace {

// The two large windows ask before they close.
void putAway(QWidget* window)
{
    if (qobject_cast<Login*>(window) || qobject_cast<Channel*>(window))
        window->hide();
    else if (window)
        window->close();
}

} // namespace

// What leads where in the whole program: one session in which every control, menu entry and
// event of the tray is used once, and what it is for is looked at where it ends.
class WiringTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void initTestCase()
    {
        loadResources();
        m_script.afterLook = [this](const QString& look) {
            if (look == "tray"_L1 || look == "menu"_L1)
                (look == "tray"_L1 ? m_client->around.tray.menu : window().menus().nicks())->hide();
        };
        const QString address = TestSurroundings::ownAddress(1);
        m_server = std::make_unique<ScriptedServer>(address);
        QVERIFY(m_server->isListening());
        m_client = std::make_unique<TestClient>(address, &m_events);
        m_client->around.engine = &m_engine;
        m_client->beInTheRoom(*m_server, "anna bob");
    }

    // One private window, with bob in it; nothing selected, written or chosen.
    void init()
    {
        ScriptedDialogs& boxes = m_client->around.dialogs;
        boxes.answerText.clear();
        boxes.answerYes = true;
        for (const auto& place : m_client->chatRoom().windows.queryFactory.places())
            place->Unload();
        hear(u":bob!u@h PRIVMSG anna :hello"_s);
        window().Show();
        window().findChild<QTabBar*>(u"TBar"_s)->setCurrentIndex(1);
        perform(u"press check2"_s);
        perform(u"color lblcin1"_s);
        window().nickRows().setListIndex(-1);
        m_client->around.waves.played.clear();
        m_client->around.links.opened.clear();
        m_engine.calls.clear();
        boxes.shown.clear();
        m_heard = m_server->received().size();
    }

    void doThisSeeThat_data()
    {
        QTest::addColumn<QString>("script");

        // What is done, one of the looks, or "window", and what is seen there then.
        const auto row = [](const char* name, const char* script, const char* where,
                            const char* expected) {
            const QString steps = QString::fromUtf8(script);
            const QString seen = QString::fromUtf8(expected);
            QString whole = steps + "|?"_L1 + QLatin1StringView(where) + u' ' + seen;
            if (qstrcmp(where, "window") == 0)
                whole = "away "_L1 + seen + u'|' + steps + "|window "_L1 + seen;
            QTest::newRow(name) << whole;
        };
        const auto sends = [&](const char* name, const char* script, const char* lines) {
            row(name, script, "sent", lines);
        };

        sends("bold", "press Check3|say a|press Check3|say b",
              "PRIVMSG #Harbor :{B}{C}1 a\nPRIVMSG #Harbor :{C}1 b\n");
        sends("underline", "press Check4|say a|press Check4|say b",
              "PRIVMSG #Harbor :{C}1 {U}a\nPRIVMSG #Harbor :{C}1 b\n");
        sends("colour", "press check2|color lblcin4|say a|press check2|color lblcin1|say b",
              "PRIVMSG #Harbor :{C}4 a\nPRIVMSG #Harbor :{C}1 b\n");
        row("colour of the input line", "press check2|color lblcin4", "input", "#ff0000");
        row("palette goes with the choice", "press check2|color lblcin4", "palette", "away");
        sends("smiley", "press check1|smiley imgicon3|say !", "PRIVMSG #Harbor :{C}1 :D!\n");
        sends("own action", "answer dances|press Label1", "PRIVMSG #Harbor :{A}ACTION dances{A}\n");
        sends("own action to one", "answer nods|select bob|private LabelAction",
              "PRIVMSG bob :{A}ACTION nods{A}\n");
        sends("private line", "tell hi", "PRIVMSG bob {C}1 hi\n");
        row("colour of a private line", "press check2|color lblcin4|tell hi", "tint", "#ff0000");
        sends("greeting", "select bob|entry mnu_hi",
              "PRIVMSG #Harbor :{A}ACTION Says Hi To bob{A}\n");
        sends("slap", "select bob|entry mnu_slap",
              "PRIVMSG #Harbor :{A}ACTION slaps {C}4bob{C}6 around a bit with a large trout.{A}\n");
        sends("whois", "select bob|entry mnu_nicks_whois", "WHOIS bob\n");
        sends("ban", "select bob|entry mnu_nicks_ban", "MODE #Harbor +b bob!*@*\n");
        sends("rank", "select bob|entry mnu_nicks_op", "MODE #Harbor +o bob\n");
        sends("away and back", "entry mnu_status_brb|entry mnu_status_away",
              "AWAY I will be back later.\n"
              "PRIVMSG #Harbor :{A}ACTION has changed status: I will be right back.{A}\n"
              "AWAY \nPRIVMSG #Harbor :{A}ACTION is online now: I'm Online.{A}\n");
        sends("bans", "entry mnu_chan_ban", "MODE #Harbor b\n");

        for (const auto& [step, title] : {
                 std::pair("entry mnu_File_changenick", "Change NickName"),
                 std::pair("entry mnu_File_changepass", "Change Your Password For anna"),
                 std::pair("entry mnu_register_nickname", "NickName Registration"),
                 std::pair("entry mnu_view_fontsize", "Change Your Font Name and Font Size"),
                 std::pair("entry mnu_View_Buddylist", "View Whois Online"),
                 std::pair("entry mnu_ingorelist", "IgnoreList - Add Chatters to avoid chats!"),
                 std::pair("entry mnu_chan_ban", "Channel Ban List For #Harbor"),
                 std::pair("entry mnu_About", "About QuillHarbor Alpha 1.0a"),
                 std::pair("entry mnu_author", "About Quill Harbor Messenger Author/Creator"),
                 std::pair("entry mnu_systray_about", "About QuillHarbor Alpha 1.0a"),
                 std::pair("entry mnu_author_systray",
                           "About Quill Harbor Messenger Author/Creator"),
                 std::pair("entry mnu_systray_hide", "QuillHarbor Messenger - Sign In"),
                 std::pair("hear :s 431 anna :None given", "NickName Already In Use Or Invalid"),
                 std::pair("hide|entry mnu_chatroom", "QuillHarbor Messenger 1.0"),
                 std::pair("hide|tray double", "QuillHarbor Messenger 1.0"),
                 std::pair("close", "QuillHarbor Messenger - Sign In"),
                 std::pair("hide|signin mnu_chatroom", "QuillHarbor Messenger 1.0"),
                 std::pair("signin mnu_About", "About QuillHarbor Alpha 1.0a"),
                 std::pair("signin mnu_author", "About Quill Harbor Messenger Author/Creator"),
                 std::pair("network lnkNetwork", "Choose a Network"),
                 std::pair("press check1", "Smileys"),
                 std::pair("press check2", "Select Color"),
                 std::pair("press Command3", "Change Your Font Name and Font Size"),
                 std::pair("press command1", "IgnoreList - Add Chatters to avoid chats!"),
                 std::pair("press Label4", "About Quill Harbor Messenger Author/Creator"),
                 std::pair("press Label5", "About Quill Harbor Messenger Author/Creator"),
                 std::pair("private Label5", "About Quill Harbor Messenger Author/Creator"),
                 std::pair("private Label6", "IgnoreList - Add Chatters to avoid chats!"),
                 std::pair("private Label7", "Change Your Font Name and Font Size"),
                 std::pair("private Label8", "Select Color"),
                 std::pair("private cmdOptions", "View Whois Online"),
                 std::pair("key cmdOptions", "View Whois Online"),
             })
            row(step, step, "window", title);

        row("close of the private window", "private Label4", "private", "");
        row("double click on a chatter", "private Label4|talk bob", "private", "bob");
        row("Enter on a chatter", "private Label4|select bob|rowkey", "private", "bob");
        row("private talk refused",
            "entry mnu_pm_yes|hear :eve!u@h PRIVMSG anna :x|entry mnu_pm_no", "private", "bob");
        row("a title as it stands", "private Label4|hear :[*]b[*][*]!u@h PRIVMSG anna :x",
            "private", "[*]b[*][*]");
        row("a nick that looks like markup", "private Label4|hear :<b>x!u@<i>&lt;h PRIVMSG anna :x",
            "private", "<b>x");
        row("menu on a chatter", "menu bob", "menu", "Conversation");
        row("menu key", "select bob|menukey", "menu", "Conversation");
        row("tray menu", "tray menu", "tray", "&Show Main Window");
        row("screen cleared", "entry mnu_options_clear", "room",
            "- Cleared Chat Screen - You've cleared your chat screen, all previous public messages "
            "cleared.");
        row("smiley in the room",
            "entry mnu_options_clear|hear :bob!u@h PRIVMSG #Harbor :well :D done", "room",
            "- Cleared Chat Screen - You've cleared your chat screen, all previous public messages "
            "cleared. <bob> well \ufffc done");
        row("no sound", "entry mnu_sound_yes|hear :bob!u@h PRIVMSG anna :x|entry mnu_sound_no",
            "waves", "");
        row("sound", "hear :bob!u@h PRIVMSG anna :x", "waves", "send.wav");
        row("homepage", "entry mnu_Homepage", "links", "http://localhost:8667/quillharbor");
        row("feedback", "signin mnu_Feedback", "links", "http://localhost:8667//");
        row("page of the first tab", "page 0", "engine", "load http://localhost:8667/one");
        row("page of the last tab", "page 2", "engine", "load http://localhost:8667/two");
        row("end from the sign-in form", "refuse|signin mnu_Close", "boxes",
            "Quill Harbor Messenger: Are you sure you want to exit QuillHarbor Messenger?");
        row("close of the window", "refuse|close", "boxes",
            "Quill Harbor Messenger: This will resize (minmize) messenger in system tray. Are you "
            "sure you want to to exit Quill Harbor Messenger ChatRoom? Messenger will be running "
            "in "
            "system tray.");
        row("line", "hide", "lock", "is open: whoever carries it can read along, passwords too.");
        row("connected", "hide", "says", "Type here and press Enter");
    }

    void doThisSeeThat()
    {
        QFETCH(QString, script);
        perform(script);
        QCOMPARE(guessedTexts(), QStringList());
    }

    // An entry that nobody answers would look alive. One is meant to be like that.
    void everyEntryLeadsSomewhere()
    {
        struct Open : QObject
        {
            using QObject::receivers;
        };
        const auto handlers = [](const ActionEntry* entry) {
            return (entry->*&Open::receivers)(SIGNAL(triggered(bool)));
        };
        const ActionEntry* idle = &window().entry(u"mnu_away_dinner"_s);
        for (const ActionEntry* entry : window().findChildren<ActionEntry*>())
            QVERIFY2(entry == idle || handlers(entry) > handlers(idle),
                     qPrintable(entry->objectName()));
    }

    void trayHoldsTheIcon()
    {
        const RecordingTray& tray = m_client->around.tray;
        QVERIFY(!tray.last.icon.isNull());
        QCOMPARE(tray.last.tip, u"QuillHarbor Messenger V. 1.0"_s);
    }

    void popupTellsTheFailure()
    {
        m_server->stopListening();
        m_client->click("mnu_File_Disconnect");
        QCOMPARE(window().lock().accessibleName(), QString());
        QTRY_VERIFY(m_server->peerHasGone());
        m_client->click("mnu_File_Connect");
        QTRY_VERIFY(shown<frmPopup>());
        const QString body = shown<frmPopup>()->findChild<QLabel*>(u"Label2"_s)->text();
        QVERIFY2(m_client->conversation().contains("ERROR : "_L1 + body), qPrintable(body));
    }

private:
    void perform(const QString& script) { m_script.play(RecordingDesk::coded(script)); }
    Channel& window() { return m_client->window(); }
    QString heard() const { return QString::fromLatin1(m_server->received().mid(m_heard)); }
    static void press(QWidget* owner, const QString& name)
    {
        auto* control = owner ? owner->findChild<QWidget*>(name) : nullptr;
        QVERIFY2(control && control->isVisible(), qPrintable(name));
        QTest::mouseClick(control, Qt::LeftButton, {}, {8, control->height() / 2});
    }
    void hear(const QString& line) { tell(*m_server, RecordingDesk::coded(line)); }
    void useRow(const QString& nick, Qt::MouseButton button, bool twice)
    {
        ListBoxWidget& list = window().nickRows();
        QWidget* rows = list.viewport();
        const auto found = list.findItems(nick, Qt::MatchExactly);
        const QPoint place = list.visualItemRect(found.value(0)).center();
        QTest::mouseClick(rows, button, {}, place);
        if (twice)
            QTest::mouseDClick(rows, button, {}, place);
    }
    static QString firstEntryOf(const QMenu* menu)
    {
        return menu->isVisible() ? menu->actions().constFirst()->text() : QString();
    }
    // A window of this title is there, and goes: one of them keeps all others waiting.
    static void seeAndPutAway(const QString& title)
    {
        QTRY_VERIFY2(windowTitled(title), qPrintable(title));
        QCOMPARE(guessedTexts(), QStringList());
        QWidget* window = windowTitled(title);
        if (!qobject_cast<Form*>(window))
            return putAway(window);
        QTest::keyClick(window->windowHandle(), Qt::Key_Escape);
        QVERIFY(!windowTitled(title));
    }

    Script m_script{
        {
            {u"away"_s, [](const QString& title) { putAway(windowTitled(title)); }},
            {u"window"_s, seeAndPutAway},
            {u"entry"_s, [this](const QString& name) { m_client->click(name.toLatin1()); }},
            {u"signin"_s,
             [this](const QString& name) {
                 m_client->messenger.login().findChild<QAction*>(name)->trigger();
             }},
            {u"press"_s, [this](const QString& name) { press(&window(), name); }},
            {u"private"_s, [](const QString& name) { press(shown<QueryForm>(), name); }},
            {u"key"_s,
             [](const QString& name) {
                 QTest::keyClick(shown<QueryForm>()->findChild<QWidget*>(name), Qt::Key_Return);
             }},
            {u"network"_s,
             [this](const QString& name) {
                 m_client->messenger.login().Show();
                 m_client->messenger.login().findChild<QToolButton*>(name)->setEnabled(true);
                 press(&m_client->messenger.login(), name);
             }},
            {u"color"_s, [](const QString& name) { press(shown<frmcolor>(), name); }},
            {u"smiley"_s, [](const QString& name) { press(shown<frmSmileys>(), name); }},
            {u"select"_s, [this](const QString& nick) { useRow(nick, Qt::LeftButton, false); }},
            {u"talk"_s, [this](const QString& nick) { useRow(nick, Qt::LeftButton, true); }},
            {u"menu"_s, [this](const QString& nick) { useRow(nick, Qt::RightButton, false); }},
            {u"rowkey"_s, [this](auto) { QTest::keyClick(&window().nickRows(), Qt::Key_Return); }},
            {u"menukey"_s,
             [this](auto) {
                 QContextMenuEvent event(QContextMenuEvent::Keyboard, {9, 9}, {9, 9});
                 QCoreApplication::sendEvent(window().nickRows().viewport(), &event);
             }},
            {u"say"_s, [this](const QString& text) { m_client->say(text); }},
            {u"tell"_s,
             [this](const QString& text) {
                 QTest::keyClicks(&shown<QueryForm>()->DataOut(), text);
                 QTest::keyClick(&shown<QueryForm>()->DataOut(), Qt::Key_Return);
             }},
            {u"answer"_s,
             [this](const QString& text) { m_client->around.dialogs.answerText = text; }},
            {u"refuse"_s, [this](const QString&) { m_client->around.dialogs.answerYes = false; }},
            {u"hear"_s, [this](const QString& line) { hear(line); }},
            {u"hide"_s, [this](const QString&) { window().hide(); }},
            {u"close"_s, [this](const QString&) { window().close(); }},
            {u"tray"_s,
             [this](const QString& message) {
                 using Message = NotificationArea::Message;
                 Q_EMIT m_client->around.tray.mouse(message == "double"_L1 ? Message::LButtonDblClk
                                                                           : Message::RButtonUp);
             }},
            {u"page"_s,
             [this](const QString& tab) {
                 window().findChild<QTabBar*>(u"TBar"_s)->setCurrentIndex(tab.toInt());
                 m_client->chatRoom().pages.navigateHome(u"/one"_s);
                 m_client->chatRoom().pages.navigateMisc(u"/two"_s);
             }},
        },
        {
            {u"sent"_s, [this] { return heard().remove(u"PONG :after\n"_s); }},
            {u"input"_s, [this] { return window().inputColor().name(); }},
            {u"tint"_s,
             [] { return shown<QueryForm>()->DataOut().palette().color(QPalette::Text).name(); }},
            {u"palette"_s, [] { return shown<frmcolor>() ? u"open"_s : u"away"_s; }},
            {u"room"_s, [this] { return m_client->conversation().simplified(); }},
            {u"boxes"_s,
             [this] { return m_client->around.dialogs.shown.join(u'\n').replace(u'|', ": "_L1); }},
            {u"links"_s, [this] { return m_client->around.links.opened.join(u' '); }},
            {u"engine"_s, [this] { return m_engine.calls.join(u' ').section(u' ', -2); }},
            {u"tray"_s, [this] { return firstEntryOf(m_client->around.tray.menu); }},
            {u"menu"_s, [this] { return firstEntryOf(window().menus().nicks()); }},
            {u"lock"_s, [this] { return window().lock().accessibleName().section(u' ', 4); }},
            {u"says"_s, [this] { return m_client->inputSays(); }},
            {u"waves"_s,
             [this] {
                 const QStringList& played = m_client->around.waves.played;
                 return played.isEmpty() ? QString() : played.last().section(u'/', -1);
             }},
            {u"private"_s,
             [this] {
                 QStringList titles;
                 for (const auto& place : m_client->chatRoom().windows.queryFactory.places())
                     titles +=
                         place->window() ? place->window()->windowHandle()->title() : QString();
                 return titles.join(u' ').trimmed();
             }},
        }};

    HastyEventLoop m_events;
    FakeEngine m_engine;
    std::unique_ptr<ScriptedServer> m_server;
    std::unique_ptr<TestClient> m_client;
    qsizetype m_heard = 0;
};

QTEST_MAIN(WiringTest)
#include "tst_wiring.moc"
