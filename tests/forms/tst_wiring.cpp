#include "controls/SvgPicture.h"
#include "desktop/SitePages.h"
#include "platform/Resources.h"
#include "support/FakeEngine.h"
#include "support/ScriptedServer.h"
#include "support/TestClient.h"

#include <QCheckBox>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTabBar>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace {

struct Step
{
    std::function<void()> act;
    std::function<QString()> seen;
    QString expected;
};

QWidget* windowTitled(const QString& title)
{
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && window->windowTitle() == title)
            return window;
    }
    return nullptr;
}

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
    void initTestCase();
    void cleanupTestCase();
    void init();

    void doThisSeeThat_data();
    void doThisSeeThat();
    void everyEntryLeadsSomewhere();
    void trayHoldsTheIcon();
    void popupTellsTheFailure();
    void exitFromTheTray();

private:
    QByteArray heard() const { return m_server->received().mid(m_heard); }
    Channel& window() { return m_client->window(); }
    template<typename Control>
    Control* control(const char* name)
    {
        return window().findChild<Control*>(QLatin1StringView(name));
    }
    void press(const char* button) { QTest::mouseClick(control<QWidget>(button), Qt::LeftButton); }
    QWidget* privateWindow()
    {
        const auto& places = m_client->chatRoom().windows.queryFactory.places();
        return places.empty() ? nullptr : places.front()->window();
    }
    void pressInPrivate(const char* button)
    {
        QTest::mouseClick(privateWindow()->findChild<QWidget*>(QLatin1StringView(button)),
                          Qt::LeftButton);
    }
    void select(const QString& row);
    void beSaid(const QByteArray& from, const QByteArray& text);

    void sends(const char* name, std::function<void()> act, const QByteArray& lines);
    void shows(const char* name, std::function<void()> act, const QString& title);

    HastyEventLoop m_events;
    FakeEngine m_engine;
    std::unique_ptr<ScriptedServer> m_server;
    std::unique_ptr<TestClient> m_client;
    qsizetype m_heard = 0;
};

void WiringTest::initTestCase()
{
    loadResources();
    const QString address = TestSurroundings::ownAddress(1);
    m_server = std::make_unique<ScriptedServer>(address);
    QVERIFY(m_server->isListening());
    m_client = std::make_unique<TestClient>(address, &m_events);
    m_client->around.engine = &m_engine;
    m_client->start();
    m_client->signIn(u"anna"_s);
    QTRY_VERIFY(m_server->received().contains("USER "));
    m_server->say(":s 001 anna :Welcome\r\n:s 002 anna :Your host is s\r\n");
    QTRY_VERIFY(heard().contains("JOIN "));
    m_server->say(":anna!u@h JOIN :#Harbor\r\n:s 353 anna = #Harbor :anna bob\r\n");
    QTRY_COMPARE(m_client->chatters().size(), 2);
    beSaid("bob", "hello");
    QTRY_VERIFY(privateWindow());
}

void WiringTest::cleanupTestCase()
{
    m_client.reset();
    m_server.reset();
}

void WiringTest::init()
{
    m_heard = m_server->received().size();
    window().Show();
    control<QTabBar>("TBar")->setCurrentIndex(1);
    m_client->around.dialogs.answerText.clear();
}

void WiringTest::beSaid(const QByteArray& from, const QByteArray& text)
{
    m_server->say(":" + from + "!u@h PRIVMSG anna :" + text + "\r\n");
}

void WiringTest::select(const QString& row)
{
    ListBox& nicks = window().lstNicks();
    for (int i = 0; i < nicks.ListCount(); ++i) {
        if (nicks.List(i) == row)
            nicks.setListIndex(i);
    }
}

// A row whose effect is what the server hears.
void WiringTest::sends(const char* name, std::function<void()> act, const QByteArray& lines)
{
    QTest::newRow(name) << Step{std::move(act), [this] { return QString::fromLatin1(heard()); },
                                QString::fromLatin1(lines)};
}

// A row whose effect is a window, which is closed again: one of them keeps all others waiting.
void WiringTest::shows(const char* name, std::function<void()> act, const QString& title)
{
    QTest::newRow(name) << Step{[act = std::move(act), title] {
                                    putAway(windowTitled(title));
                                    act();
                                },
                                [title] {
                                    QWidget* shown = windowTitled(title);
                                    const QString seen = shown ? shown->windowTitle() : QString();
                                    putAway(shown);
                                    return seen;
                                },
                                title};
}

void WiringTest::doThisSeeThat_data()
{
    QTest::addColumn<Step>("step");
    const auto say = [this](const char* text) { m_client->say(QLatin1StringView(text)); };
    const auto entry = [this](const char* name) { return [this, name] { m_client->click(name); }; };
    const auto button = [this](const char* name) { return [this, name] { press(name); }; };
    const auto inPrivate = [this](const char* name) {
        return [this, name] { pressInPrivate(name); };
    };
    const auto ofBob = [this](const char* name) {
        return [this, name] {
            select(u"bob"_s);
            m_client->click(name);
        };
    };
    const auto fromPalette = [this](const char* opener, const char* item) {
        return [this, opener, item] {
            press(opener);
            const bool color = QByteArray(opener) == "check2";
            QWidget* palette = windowTitled(color ? u"Select Color"_s : u"Smileys"_s);
            palette->findChild<QAbstractButton*>(QLatin1StringView(item))->click();
        };
    };

    sends(
        "bold",
        [=, this] {
            control<QCheckBox>("Check3")->setChecked(true);
            say("a");
            control<QCheckBox>("Check3")->setChecked(false);
            say("b");
        },
        "PRIVMSG #Harbor :\x02\x03"
        "1 a\nPRIVMSG #Harbor :\x03"
        "1 b\n");
    sends(
        "underline",
        [=, this] {
            control<QCheckBox>("Check4")->setChecked(true);
            say("a");
            control<QCheckBox>("Check4")->setChecked(false);
            say("b");
        },
        "PRIVMSG #Harbor :\x03"
        "1 \x1f"
        "a\nPRIVMSG #Harbor :\x03"
        "1 b\n");
    sends(
        "colour",
        [=] {
            fromPalette("check2", "lblcin4")();
            say("a");
            fromPalette("check2", "lblcin1")();
            say("b");
        },
        "PRIVMSG #Harbor :\x03"
        "4 a\nPRIVMSG #Harbor :\x03"
        "1 b\n");
    QTest::newRow("colour of the input line")
        << Step{fromPalette("check2", "lblcin4"),
                [this, fromPalette] {
                    const QString seen = window().inputColor().name() +
                                         (windowTitled(u"Select Color"_s) ? " open"_L1 : ""_L1);
                    fromPalette("check2", "lblcin1")();
                    return seen;
                },
                u"#ff0000"_s};
    sends(
        "smiley",
        [=] {
            fromPalette("check1", "imgicon3")();
            say("!");
        },
        "PRIVMSG #Harbor :\x03"
        "1 :D!\n");
    sends(
        "sending by the picture",
        [this] {
            control<QLineEdit>("DataOut")->setText(u"a"_s);
            press("Image2");
        },
        "PRIVMSG #Harbor :\x03"
        "1 a\n");
    sends(
        "own action",
        [this] {
            m_client->around.dialogs.answerText = u"dances"_s;
            press("Label1");
        },
        "PRIVMSG #Harbor :\x01"
        "ACTION dances\x01\n");
    sends(
        "own action to one",
        [this] {
            m_client->around.dialogs.answerText = u"nods"_s;
            select(u"bob"_s);
            pressInPrivate("LabelAction");
        },
        "PRIVMSG bob :\x01"
        "ACTION nods\x01\n");
    sends("greeting", ofBob("mnu_hi"),
          "PRIVMSG #Harbor :\x01"
          "ACTION Says Hi To bob\x01\n");
    sends("slap", ofBob("mnu_slap"),
          "PRIVMSG #Harbor :\x01"
          "ACTION slaps \x03"
          "4bob\x03"
          "6 around a bit with a large "
          "trout.\x01\n");
    sends("whois", ofBob("mnu_nicks_whois"), "WHOIS bob\n");
    sends("ban", ofBob("mnu_nicks_ban"), "MODE #Harbor +b bob!*@*\n");
    sends("rank", ofBob("mnu_nicks_op"), "MODE #Harbor +o bob\n");
    sends("away", entry("mnu_status_brb"),
          "AWAY I will be back later.\nPRIVMSG #Harbor :\x01"
          "ACTION has changed status: I will "
          "be right back.\x01\n");
    sends("back", entry("mnu_status_away"),
          "AWAY \nPRIVMSG #Harbor :\x01"
          "ACTION is online now: I'm Online.\x01\n");
    sends("bans", entry("mnu_chan_ban"), "MODE #Harbor b\n");

    for (const auto& [name, title] : {
             std::pair("mnu_File_changenick", "Change NickName"),
             std::pair("mnu_File_changepass", "Change Your Password For anna"),
             std::pair("mnu_register_nickname", "NickName Registration"),
             std::pair("mnu_view_fontsize", "Change Your Font Name and Font Size"),
             std::pair("mnu_View_Buddylist", "View Whois Online"),
             std::pair("mnu_ingorelist", "IgnoreList - Add Chatters to avoid chats!"),
             std::pair("mnu_About", "About QuillHarbor Alpha 1.0a"),
             std::pair("mnu_author", "About Quill Harbor Messenger Author/Creator"),
             std::pair("mnu_systray_about", "About QuillHarbor Alpha 1.0a"),
             std::pair("mnu_author_systray", "About Quill Harbor Messenger Author/Creator"),
             std::pair("mnu_systray_hide", "QuillHarbor Messenger - Sign In"),
         })
        shows(name, entry(name), QLatin1StringView(title));
    for (const auto& [name, title] : {
             std::pair("check1", "Smileys"),
             std::pair("check2", "Select Color"),
             std::pair("Command3", "Change Your Font Name and Font Size"),
             std::pair("command1", "IgnoreList - Add Chatters to avoid chats!"),
             std::pair("Label4", "About Quill Harbor Messenger Author/Creator"),
             std::pair("Label5", "About Quill Harbor Messenger Author/Creator"),
         })
        shows(name, button(name), QLatin1StringView(title));
    for (const auto& [row, name, title] : {
             std::tuple("private author", "Label5", "About Quill Harbor Messenger Author/Creator"),
             std::tuple("private ignored", "Label6", "IgnoreList - Add Chatters to avoid chats!"),
             std::tuple("private font", "Label7", "Change Your Font Name and Font Size"),
             std::tuple("private colour", "Label8", "Select Color"),
             std::tuple("private buddies", "cmdOptions", "View Whois Online"),
         })
        shows(row, inPrivate(name), QLatin1StringView(title));
    shows(
        "window from the tray",
        [this] {
            window().hide();
            m_client->click("mnu_chatroom");
        },
        u"QuillHarbor Messenger 1.0"_s);
    shows(
        "window by a double click on the icon",
        [this] {
            window().hide();
            Q_EMIT m_client->around.tray.mouse(NotificationArea::Message::LButtonDblClk);
        },
        u"QuillHarbor Messenger 1.0"_s);

    QTest::newRow("tray menu") << Step{
        [this] {
            Q_EMIT m_client->around.tray.mouse(NotificationArea::Message::RButtonDown);
            Q_EMIT m_client->around.tray.mouse(NotificationArea::Message::RButtonUp);
        },
        [this] {
            QMenu* menu = m_client->around.tray.menu;
            const bool shown = menu->isVisible();
            menu->hide();
            return shown ? menu->actions().constFirst()->text() : QString();
        },
        u"&Show Main Window"_s};
    QTest::newRow("screen cleared") << Step{
        entry("mnu_options_clear"), [this] { return m_client->conversation().simplified(); },
        u"- Cleared Chat Screen - You've cleared your chat screen, all previous public messages "
        "cleared."_s};
    QTest::newRow("smiley in the room")
        << Step{[this] { m_server->say(":bob!u@h PRIVMSG #Harbor :well :D done\r\n"); },
                [this] {
                    const QString line = m_client->conversation().trimmed().section(u'\n', -1);
                    return line.section(u' ', -3);
                },
                u"well \ufffc done"_s};
    const auto waves = [this] {
        QStringList names;
        for (const QString& file : std::as_const(m_client->around.waves.played))
            names += file.section(u'/', -1);
        return names.join(u' ');
    };
    const auto sound = [this](const char* option) {
        return [this, option] {
            m_client->click(option);
            m_client->around.waves.played.clear();
            beSaid("bob", "listen");
            QTRY_VERIFY(
                privateWindow()->findChild<ChatView*>(u"DataIn"_s)->Text().contains("listen"_L1));
            privateWindow()->findChild<ChatView*>(u"DataIn"_s)->setText({});
        };
    };
    QTest::newRow("no sound") << Step{sound("mnu_sound_yes"), waves, {}};
    QTest::newRow("sound") << Step{sound("mnu_sound_no"), waves, u"send.wav"_s};
    QTest::newRow("private talk refused")
        << Step{[this] {
                    m_client->click("mnu_pm_yes");
                    beSaid("eve", "psst");
                    m_server->say("PING :after\r\n");
                    QTRY_VERIFY(heard().contains("PONG"));
                },
                [this] {
                    m_client->click("mnu_pm_no");
                    return windowTitled(u"eve"_s) ? u"open"_s : u"closed"_s;
                },
                u"closed"_s};
    QTest::newRow("homepage") << Step{entry("mnu_Homepage"),
                                      [this] { return m_client->around.links.opened.join(u' '); },
                                      QStringLiteral("http://localhost:8667/quillharbor")};
    const auto page = [this](int tab) {
        return [this, tab] {
            m_engine.calls.clear();
            control<QTabBar>("TBar")->setCurrentIndex(tab);
            m_client->chatRoom().pages.navigateHome(u"/one"_s);
            m_client->chatRoom().pages.navigateMisc(u"/two"_s);
        };
    };
    const auto loaded = [this] {
        return m_engine.calls.isEmpty() ? QString() : m_engine.calls.last();
    };
    QTest::newRow("page of the first tab")
        << Step{page(0), loaded, u"load http://localhost:8667/one"_s};
    QTest::newRow("page of the last tab")
        << Step{page(2), loaded, u"load http://localhost:8667/two"_s};
    shows(
        "double click on a chatter",
        [this] {
            select(u"bob"_s);
            Q_EMIT window().lstNicks_DblClick();
        },
        u"bob"_s);
    QTest::newRow("menu on a chatter")
        << Step{[this] {
                    select(u"bob"_s);
                    Q_EMIT window().lstNicks_RightButtonDown({});
                },
                [this] {
                    QMenu* menu = window().menus().nicks();
                    const bool shown = menu->isVisible();
                    menu->hide();
                    return shown ? m_client->window().entry(u"mnu_nicks_op"_s).Caption()
                                 : QString();
                },
                u"&Op"_s};
}

void WiringTest::doThisSeeThat()
{
    QFETCH(Step, step);
    step.act();
    QString seen;
    const auto met = [&] { return (seen = step.seen()) == step.expected; };
    QVERIFY2(QTest::qWaitFor(met), qPrintable("seen: "_L1 + seen));
}

// An entry that nobody answers would look alive. One is meant to be like that.
void WiringTest::everyEntryLeadsSomewhere()
{
    struct Open : QObject
    {
        using QObject::receivers;
    };
    const auto handlers = [](const ActionEntry* entry) {
        return (entry->*&Open::receivers)(SIGNAL(triggered(bool)));
    };
    const auto* idle = control<ActionEntry>("mnu_away_dinner");
    const QList<ActionEntry*> entries = window().findChildren<ActionEntry*>();
    QVERIFY(entries.size() > 35);
    for (const ActionEntry* entry : entries)
        QVERIFY2(entry == idle || handlers(entry) > handlers(idle),
                 qPrintable(entry->objectName()));
}

void WiringTest::trayHoldsTheIcon()
{
    const RecordingTray& tray = m_client->around.tray;
    QVERIFY(!tray.last.icon.isNull());
    QCOMPARE(tray.last.tip, u"QuillHarbor Messenger V. 1.0"_s);
    QVERIFY(tray.menu);
    QCOMPARE(tray.menu->objectName(), u"mnu_systray"_s);
}

void WiringTest::popupTellsTheFailure()
{
    m_server->stopListening();
    m_client->click("mnu_File_Disconnect");
    QTRY_VERIFY(m_server->peerHasGone());
    m_client->click("mnu_File_Connect");
    const auto body = [] {
        for (const QWidget* window : QApplication::topLevelWidgets()) {
            if (window->objectName() == "frmPopup"_L1 && window->isVisible())
                return window->findChild<QLabel*>(u"Label2"_s)->text();
        }
        return QString();
    };
    QTRY_VERIFY(!body().isEmpty());
    QVERIFY2(m_client->conversation().contains("ERROR : "_L1 + body()), qPrintable(body()));
}

void WiringTest::exitFromTheTray()
{
    m_client->click("mnu_systray_exit");
    QTRY_COMPARE(m_client->around.ends, 1);
}

QTEST_MAIN(WiringTest)
#include "tst_wiring.moc"
