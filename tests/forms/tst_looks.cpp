#include "controls/Theme.h"
#include "platform/QtDialogs.h"
#include "platform/Resources.h"
#include "support/RecordingDesk.h"
#include "support/Script.h"
#include "support/TestClient.h"
#include "view/ViewLook.h"

#include <QtTest>
#include <QtWidgets>

using namespace Qt::StringLiterals;

namespace {

// What a menu shows, entry by entry, those of a menu in it further in.
QString shownIn(const QList<QAction*>& entries, const QString& indent = {})
{
    QString shown;
    for (const QAction* entry : entries) {
        shown += indent + (entry->isSeparator() ? u"-"_s : entry->text());
        if (entry->isCheckable())
            shown += entry->isChecked() ? " [x]"_L1 : " [ ]"_L1;
        if (!entry->shortcut().isEmpty())
            shown += " <"_L1 + entry->shortcut().toString() + u'>';
        shown += entry->isEnabled() ? "\n"_L1 : " (off)\n"_L1;
        if (entry->menu())
            shown += shownIn(entry->menu()->actions(), indent + "  "_L1);
    }
    return shown;
}

constexpr auto everyMenu = R"(
File
  Sign Out
  &Go Chat!
  Close
Help
  Send Feedback
  About Messenger
  About Author/Creator

&File
  &Connect (off)
  &Disconnect
  &Register
    Your Chat Name
  &Get Clear Screen
  -
  &Exit Application
&Option
  &Change
    &Your NickName
    &Your Password
  &Font Settings
  &Present Status
    &..:Be Right Back:..
    &..:On The Dinner:..
    &..:On The Lunch:..
    &..:On The Phone:..
    &..:Busy:..
    &..:Away From Keyboard:..
    &..:Away [Own Reason]:.
  &Recieve/Send Private Chat
    &Yes [x]
    &No [ ]
  &Get Private Chat Sound
    &Yes [x]
    &No [ ]
&View
  &View Channel Ban List
  &View Buddy List Users
  &View Ignore List Users
&Help
  &About Application
  &About Author/Creator
  -
  &Application Homepage

Conversation
Block Conversation
&Slap
-
&Action
  &Hi
  &Welome
  &Hugs
  &Handshakes
  Own Action
-
Whois
&Op
&Halfop
&Voice
-
Kick this user
Ban this user

&Show Main Window
&Show ChatRoom
&About Application/Software
&About Author/Creator
&Exit Application
)"_L1;

// What a window says: its title, and the words of all that stands in it.
QString wordsOf(const QWidget& window)
{
    QStringList words{window.windowTitle()};
    for (const QWidget* each : window.findChildren<QWidget*>()) {
        if (each->window() != &window || qobject_cast<QTabBar*>(each->parentWidget()))
            continue;
        if (const auto* label = qobject_cast<const QLabel*>(each))
            words += label->text();
        else if (const auto* button = qobject_cast<const QAbstractButton*>(each))
            words += button->text();
        else if (const auto* field = qobject_cast<const QLineEdit*>(each))
            words += field->placeholderText();
        else if (const auto* frame = qobject_cast<const QGroupBox*>(each))
            words += frame->title();
        else if (qobject_cast<const ListBoxWidget*>(each))
            words += each->accessibleDescription();
        for (const QString& more : {each->toolTip(), each->accessibleName()}) {
            if (!words.contains(more))
                words += more;
        }
    }
    words.removeAll(QString());
    return words.join(u" | "_s);
}

constexpr const char* everyWord = R"(
sign-in: QuillHarbor Messenger - Sign In | Your UserName: | a name you like, without blanks | Your
user name | Your Password: | only for a registered name | Your password | Remember my password |
Sign me as Guest On Chat | Remember me [recommend] | Load at Windows StartUp | You're logged in... |
Sign In | Time: 06:07:08 | Made with care by the Quill Harbor crew | Calm water, good company |
Network: SERVER | Choose another network

room: QuillHarbor Messenger 1.0 | Pages | The line to SERVER is open: whoever carries it can read
along, passwords too. | Back | Forward | Stop | Refresh | Home | Search | Loading |
http://localhost:8667/quillmisc | Try again | Try again to load the page | Back | Forward | Stop |
Refresh | Home | Search | Loading | http://localhost:8667/quillharbor | Try again | Topic | Total
Chatters : [ 4 ] | Chatters | Conversation | Find in this view | Find previous | Find next | × |
Close | New messages below | Smileys | Select Color | Bold | UnderLine | Font Settings | IgnoreList
| Own Action | About | Author | Type here and press Enter | Your message | Send

private: bob | bob | u@h | Conversation | Find in this view | Find previous | Find next | × | Close
| New messages below | Message | Send | BuddyList | IgnoreList | Author | Close | Own Action | Font
Settings | Colour Settings

network: Choose a Network | &Server: | Server | A server of the house: its lines have a form of
their own. The line will be open: whoever carries it can read along, passwords too. | &Room: | none:
you enter one by yourself | Room | &Letters: | Letters | This time the program was started for
SERVER. What you choose here holds from its next start on. | Try It | OK | Cancel

change-nick: Change NickName | Enter A New NickName | NickName | OK

change-password: Change Your Password For anna | This service is for registered users | Enter your
New Password for anna .Otherwise, Click on New Nick and Change your nickname. | NickName : anna |
Password : | Password | OK | New Nick

register: NickName Registration | Fill The Requirements Below : | NickName : | NickName | Password :
| Password | E-mail Address : | E-mail Address | Register | Cancel

font: Change Your Font Name and Font Size | Font: | Font name | Harbour Boxes | Font size | OK

buddies: View Whois Online | Online | Your buddies stand here while they are on the network. Setup
is where you choose them. | The names that are looked for. Add asks for one. | Setup | View | Setup
| Add | Remove | Clear | Refresh

ignored-nobody: IgnoreList - Add Chatters to avoid chats! | Nobody is blocked. Choose a chatter in
the room's list and click Add here, or take Block Conversation in the chatter's own menu. | Blocked
chatters | First choose a chatter in the room's list. Then Add asks for the name. | Add | Remove |
Clear

about: About QuillHarbor Alpha 1.0a | A boat under a quill sail comes home to the harbour |
QuillHarbor Messenger 1.0 | A small chat client for one network and its one room. Sign in, talk,
whisper, and keep an eye on your buddies. | Written and drawn by the Quill Harbor crew: the keepers
who wrote it, the sailors who tried it in all weathers, and the artist of the harbour cat. | It
comes without any warranty. Fair winds!

author: About Quill Harbor Messenger Author/Creator | Quill Harbor Messenger | Made by | the Quill
Harbor crew | At the helm | the harbour keepers | Pictures and sound | the lighthouse painters |
Tried and shaken | the sailors of #Harbor | <a href="#">Visit the crew on their page</a> | Visit the
crew on their page

bans: Channel Ban List For #Harbor | Channel list | Bans | Excepts | Invities | Remove | OK

nick-in-use: NickName Already In Use Or Invalid | Please Choose Another NickName | OK

nick-password: Enter Your NickName Password | Password Required : | This nickname is registered. If
this nickname is yours, type your nickname password else type a New Nick. | NickName : anna |
Password : | Password | OK | New Nick

network-wrong: Choose a Network | &Server: | Server | There is a blank in the address. | &Room: |
none: you enter one by yourself | Room | The name of a room begins with a #. | &Letters: | Letters |
This time the program was started for SERVER. What you choose here holds from its next start on. |
Try It | OK | Cancel

box-prompt: Action Message | Type Your Own Action Message | OK | Cancel

box-question: Quill Harbor Messenger | Are you sure? | &Yes | &No
)";

QPalette desktopOf(QRgb ground, QRgb word)
{
    QPalette desktop{QColor(ground)};
    desktop.setColor(QPalette::Window, QColor(ground));
    desktop.setColor(QPalette::WindowText, QColor(word));
    return desktop;
}

// Drawn by another processor, a shade may come out a little different. An edge does not move.
bool looksLike(const QImage& found, const QImage& wanted)
{
    constexpr int shade = 24; // of 255
    if (found == wanted)
        return true;
    bool same = found.size() == wanted.size();
    for (int at = 0; same && at < found.width() * found.height(); ++at) {
        const QColor a = found.pixelColor(at % found.width(), at / found.width());
        const QColor b = wanted.pixelColor(at % found.width(), at / found.width());
        same = std::abs(a.red() - b.red()) <= shade && std::abs(a.green() - b.green()) <= shade &&
               std::abs(a.blue() - b.blue()) <= shade;
    }
    return same;
}

QString picturePath(const QString& name)
{
    return QStringLiteral(QH_PICTURES "/") + name;
}

} // namespace

// What the windows say and look like, compared to lists and to pictures that somebody has looked
// at. In these the letters are boxes, by which no machine differs from another. What looks
// different is left in the folder "different"; where that is meant, it goes into tests/pictures.
class LooksTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        loadResources();
        QVERIFY(QFontDatabase::addApplicationFont(picturePath(u"boxes.ttf"_s)) >= 0);
        QFont font(u"Harbour Boxes"_s, 9);
        font.setHintingPreference(QFont::PreferNoHinting);
        font.setStyleStrategy(QFont::NoSubpixelAntialias);
        QApplication::setFont(font);
        QApplication::setCursorFlashTime(0);
        for (const QString& words : QString::fromUtf8(everyWord).split(u"\n\n"_s))
            m_words[words.section(u": "_s, 0, 0).trimmed()] =
                words.section(u": "_s, 1).simplified();
    }

    void cleanup()
    {
        m_client.reset();
        m_server.reset();
    }

    void everyWindow_data()
    {
        QTest::addColumn<QPalette>("desktop");
        QTest::addColumn<QStringList>("windows"); // none: all
        const QStringList few{u"sign-in"_s, u"room-found"_s, u"network"_s, u"menu-file"_s};
        QTest::newRow("light") << desktopOf(0xffefefef, 0xff141414) << QStringList();
        QTest::newRow("dark") << desktopOf(0xff31363b, 0xffeff0f1) << QStringList();
        QTest::newRow("black-on-white") << desktopOf(0xffffffff, 0xff000000) << few;
        QTest::newRow("white-on-black") << desktopOf(0xff000000, 0xffffffff) << few;
    }

    void everyWindow()
    {
        QFETCH(QPalette, desktop);
        QFETCH(QStringList, windows);
        m_wanted = windows;
        QApplication::setPalette(desktop);
        applyTheme(*qApp);
        m_different.clear();
        lookAtBoxes();

        m_server = std::make_unique<ScriptedServer>(u"127.9.4.1"_s);
        QVERIFY(m_server->isListening());
        m_client = std::make_unique<TestClient>(u"127.9.4.1"_s, &m_events);
        QVERIFY(m_client->around.writeSettings("[display]\ntimes=true\nfontname=Harbour Boxes\n"
                                               "[notify]\nmention=true\n"));
        Login& login = m_client->messenger.login();
        m_client->messenger.start();
        look(u"splash"_s, shown<frmSplash>());
        m_client->start();
        look(u"sign-in"_s, &login);
        login.showReport({SessionReport::Event::Kicked, u"bob"_s, u"too loud"_s, {}});
        look(u"sign-in-told"_s, &login);
        m_client->beInTheRoom(*m_server, "@anna +vera bob cleo");
        look(u"signed-in"_s, &login);
        lookAtRoom();
        lookAtForms();
        QCOMPARE(m_different, QStringList());
    }

private:
    Channel& window() { return m_client->window(); }

    void lookAtBoxes()
    {
        QtDialogs boxes;
        const auto soon = [this](const QString& name) {
            QTimer::singleShot(0, this, [this, name] {
                look(name, QApplication::activeModalWidget());
                QApplication::activeModalWidget()->close();
            });
        };
        soon(u"box-exclamation"_s);
        boxes.MsgBox(u"Enter Your NickName"_s, u"No NickName"_s, Dialogs::Icon::Exclamation);
        soon(u"box-critical"_s);
        boxes.MsgBox(u"Type mismatch"_s, u"Error"_s, Dialogs::Icon::Critical);
        soon(u"box-question"_s);
        boxes.askYesNo(u"Are you sure?"_s, u"Quill Harbor Messenger"_s);
        soon(u"box-prompt"_s);
        boxes.InputBox(u"Type Your Own Action Message"_s, u"Action Message"_s);
    }

    void lookAtRoom()
    {
        auto& view = static_cast<ChatView&>(window().DataIn());
        view.setNow([this] { return m_client->around.clock.now().toSecsSinceEpoch(); });
        m_client->click("mnu_options_clear");
        hear(u":bob!u@h PRIVMSG #Harbor :my {B}bold{B} {U}under{U} {R}struck{R} {C}4red{C} :)"_s);
        hear(u":cleo!u@h PRIVMSG #Harbor :anna, see http://a.example/x {C}8,1pale{C} and a good "
             "many words more, so that this line needs a second row in a view of this width"_s);
        hear(u":vera!u@h PRIVMSG #Harbor :{A}ACTION waves{A}"_s);
        m_client->say(u"what I say"_s);
        QTest::keyClicks(window().focusWidget(), u"typed"_s);
        look(u"room"_s, &window());
        view.selectForReader(10, 40);
        view.find();
        window().lstNicks().setListIndex(1);
        pointAt(u"Label4"_s);
        look(u"room-found"_s, &window());

        hear(":bob!u@h TOPIC #Harbor :"_L1 + u"a topic of many words "_s.repeated(12));
        for (int line = 0; line < 40; ++line)
            hear(u":bob!u@h PRIVMSG #Harbor :one of many, anna"_s);
        view.scrollByPages(-1);
        hear(u":bob!u@h PRIVMSG #Harbor :unseen"_s);
        window().setInputColor(Qt::yellow);
        window().findChild<QLineEdit*>(u"DataOut"_s)->setText(QString(500, u'x'));
        window().findChild<QTabBar*>(u"TBar"_s)->setFocus();
        pointAt(u"TBar"_s);
        look(u"room-busy"_s, &window());
        window().findChild<QLineEdit*>(u"DataOut"_s)->clear();
        auto* picture = window().findChild<QWidget*>(u"Image2"_s);
        picture->setFocus(Qt::TabFocusReason);
        look(u"send"_s, picture);

        QString menus;
        const auto shownMenus = {m_client->messenger.login().findChild<QMenuBar*>()->actions(),
                                 window().menus().bar()->actions(),
                                 window().menus().nicks()->actions(),
                                 m_client->around.tray.menu->actions()};
        for (const QList<QAction*>& menu : shownMenus)
            menus += u'\n' + shownIn(menu);
        QCOMPARE(menus, QString(everyMenu));
        QMenu* file = window().menus().bar()->actions().constFirst()->menu();
        file->setActiveAction(file->actions().at(1));
        look(u"menu-file"_s, file);
        look(u"menu-nicks"_s, window().menus().nicks());

        QToolTip::showText({9, 9}, u"a hint"_s, &window());
        QWidget* hint = nullptr;
        for (QWidget* widget : QApplication::topLevelWidgets())
            hint = widget->objectName() == "qtooltip_label"_L1 ? widget : hint;
        look(u"hint"_s, hint);
        hear(u":bob!u@h PRIVMSG anna :only for you :D"_s);
        view.look().setShowsTimes(false); // the window's own first line has the time of today
        look(u"private"_s, shown<QueryForm>());
        shown<QueryForm>()->close();
        m_client->chatRoom().pages.navigateHome(u"/one"_s);
        window().findChild<QTabBar*>(u"TBar"_s)->setCurrentIndex(0);
        look(u"page"_s, &window());
        window().findChild<QTabBar*>(u"TBar"_s)->setCurrentIndex(1);
    }

    void lookAtForms()
    {
        constexpr std::pair<const char*, const char*> forms[]{
            {"change-nick", "entry mnu_File_changenick"},
            {"change-password", "entry mnu_File_changepass"},
            {"register", "entry mnu_register_nickname"},
            {"font", "entry mnu_view_fontsize"},
            {"about", "entry mnu_About"},
            {"author", "entry mnu_author"},
            {"buddies", "entry mnu_View_Buddylist"},
            {"buddies-setup", "entry mnu_View_Buddylist|press Command2"},
            {"ignored-nobody", "entry mnu_ingorelist"},
            {"ignored", "block eve|entry mnu_ingorelist"},
            {"bans", "entry mnu_chan_ban|hear :s 367 anna #Harbor bad!*@* olga 0"},
            {"nick-in-use", "hear :s 431 anna :None given"},
            {"nick-password", "hear :NickServ!s@s NOTICE anna :please choose a different nick."},
            {"network", "network"},
            {"network-wrong", "network|address irc://a b|room quay"},
            {"popup", "popup"},
            {"smileys", "press check1"},
            {"colors", "press check2"},
        };
        const Script script(
            {
                {u"entry"_s, [this](auto name) { m_client->click(name.toLatin1()); }},
                {u"hear"_s, [this](auto line) { hear(line); }},
                {u"press"_s,
                 [this](auto name) {
                     auto* ofRoom = window().findChild<QWidget*>(name);
                     QTest::mouseClick(ofRoom ? ofRoom : form()->findChild<QWidget*>(name),
                                       Qt::LeftButton);
                 }},
                {u"block"_s,
                 [this](auto nick) {
                     m_client->chatRoom().windows.ignoreList->List1().AddItem(nick);
                 }},
                {u"network"_s,
                 [this](auto) {
                     auto* link =
                         m_client->messenger.login().findChild<QToolButton*>(u"lnkNetwork"_s);
                     link->setEnabled(true);
                     link->click();
                 }},
                {u"address"_s,
                 [this](auto text) { form()->findChild<QComboBox*>()->setEditText(text); }},
                {u"room"_s,
                 [this](auto name) { form()->findChild<QLineEdit*>(u"txtRoom"_s)->setText(name); }},
                {u"popup"_s,
                 [this](auto) {
                     m_client->messenger.login().cmdSignIn_Click();
                     while (form()->height() < 116)
                         QMetaObject::invokeMethod(form()->findChild<QTimer*>(), "timeout");
                 }},
            },
            {});
        for (const auto& [name, steps] : forms) {
            script.play(QString::fromLatin1(steps));
            for (auto* rows : form()->findChildren<QTreeWidget*>())
                rows->setCurrentItem(rows->topLevelItem(0));
            look(QString::fromLatin1(name), form());
            if (qstrcmp(name, "change-nick") == 0)
                look(u"room-held"_s, &window());
            form()->close();
        }
    }

    void hear(const QString& line) { tell(*m_server, RecordingDesk::coded(line)); }
    void pointAt(const QString& control)
    {
        const auto* target = window().findChild<QWidget*>(control);
        QTest::mouseMove(window().windowHandle(), target->mapTo(&window(), QPoint(9, 9)));
    }
    // The small form that is open.
    static Form* form()
    {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            auto* form = qobject_cast<Form*>(widget);
            if (form && form->isVisible() && !qobject_cast<Login*>(form) &&
                !qobject_cast<Channel*>(form))
                return form;
        }
        return nullptr;
    }

    void look(const QString& window, QWidget* widget)
    {
        QVERIFY2(widget, qPrintable(window));
        if (!m_wanted.isEmpty() && !m_wanted.contains(window))
            return;
        QCoreApplication::processEvents();
        for (auto* view : widget->findChildren<ChatView*>()) // until it has come to rest
            QTRY_VERIFY(
                QThread::currentThread()->eventDispatcher()->registeredTimers(view).isEmpty());
        if (m_words.contains(window)) {
            QString words = wordsOf(*widget).simplified().replace(u"127.9.4.1"_s, u"SERVER"_s);
            words.remove(" | "_L1 + QSysInfo::machineHostName()); // it stands there, hidden
            QCOMPARE(words, m_words[window]);
        }
        const QString name = window + u'-' + QLatin1StringView(QTest::currentDataTag()) + ".png"_L1;
        const QImage found = widget->grab().toImage().convertToFormat(QImage::Format_RGB32);
        const QImage wanted(picturePath(name));
        if (looksLike(found, wanted.convertToFormat(QImage::Format_RGB32)))
            return;
        m_different += name;
        QDir().mkpath(u"different"_s);
        found.save("different/"_L1 + name, nullptr, 0);
    }

    QHash<QString, QString> m_words;
    QStringList m_wanted;
    QStringList m_different;
    HastyEventLoop m_events;
    std::unique_ptr<ScriptedServer> m_server;
    std::unique_ptr<TestClient> m_client;
};

QTEST_MAIN(LooksTest)
#include "tst_looks.moc"
