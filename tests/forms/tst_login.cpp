#include "account/Login.h"
#include "account/LoginDesk.h"
#include "controls/ActionEntry.h"
#include "controls/SvgPicture.h"
#include "controls/xpButton.h"
#include "platform/Handlers.h"
#include "platform/Resources.h"
#include "platform/Twips.h"
#include "settings/RememberedPassword.h"
#include "settings/RunKey.h"
#include "settings/Settings.h"
#include "settings/UserStore.h"
#include "support/TestSurroundings.h"

#include <QClipboard>
#include <QDir>
#include <QGuiApplication>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

struct FakeDesk final : LoginDesk
{
    QStringList calls;
    bool previous = false;

    void stopRetrying() override { calls += u"stopRetrying"_s; }
    void loadChannel() override { calls += u"loadChannel"_s; }
    void mnu_File_Connect_Click() override { calls += u"connect"_s; }
    void mnu_File_Disconnect_Click() override { calls += u"disconnect"_s; }
    void showChatRoom() override {}
    bool canHideSignIn() const override { return true; }
    void createTrayIcon() override { throw RunTimeError(RunTimeError::Number::ObjectRequired); }
    void showPopup() override { calls += u"showPopup"_s; }
    void showAbout() override {}
    void showAuthor() override {}
    void openFeedbackPage() override {}
    void chooseNetwork() override {}
    bool hasPreviousInstance() const override { return previous; }
    void End() override { calls += u"End"_s; }
};

// Answers later, or not at all, and tells what it was asked.
struct RecordingKeyring final : Keyring
{
    enum class Mood { Willing, Silent, Absent };

    Mood mood = Mood::Willing;
    QString entry;
    QStringList calls;
    std::function<void()> late; // the answer that a silent one still owes

    void read(const QString&, Told told) override
    {
        calls += u"read"_s;
        answer(std::move(told), [this] { return entry; });
    }
    void write(const QString&, const QString& password, Told told) override
    {
        calls += "write "_L1 + password;
        answer(std::move(told), [this, password] { return entry = password; });
    }
    void remove(const QString&, Told told) override
    {
        calls += u"remove"_s;
        answer(std::move(told), [this] { return entry = QString(); });
    }

private:
    void answer(Told told, const std::function<QString()>& act)
    {
        if (mood == Mood::Absent) {
            QTimer::singleShot(0, [told] { told(Answer::Unavailable, {}); });
            return;
        }
        late = [told, act] { told(Answer::Done, act()); };
        if (mood == Mood::Willing)
            QTimer::singleShot(0, std::exchange(late, {}));
    }
};
using Mood = RecordingKeyring::Mood;

const QStringList sessionStarts{u"stopRetrying"_s, u"loadChannel"_s, u"connect"_s};

} // namespace

// The sign-in form: what it makes of what is stored, what it stores, and its steps into a session.
class LoginTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { loadResources(); }
    void init();
    void cleanup();

    void loads_data();
    void loads();
    void previousInstanceChangesNothing();

    void signsIn_data();
    void signsIn();
    void refusesTheEmptyName();
    void remembers_data();
    void remembers();
    void keyringKeepsThePassword();
    void keyringFails_data();
    void keyringFails();
    void keyringAnswersLate();

    void startsWithTheDesktop();
    void entryOfAnotherRunStays();
    void lockedAutostartEndsTheSignIn();

    void boxesAct();
    void pastedLineEndsTheName();

    void looksConnected();
    void signEntryIsTheState();
    void wordsOfASession_data();
    void wordsOfASession();

    void stripLeapfrogs();
    void sizeHoldsWhileTheStripRuns();

private:
    template<typename T>
    T* control(const QString& name) const
    {
        T* found = m_login->findChild<T*>(name);
        Q_ASSERT(found);
        return found;
    }
    QLineEdit* field(const QString& name) const { return control<QLineEdit>(name); }
    QCheckBox* box(const QString& name) const { return control<QCheckBox>(name); }
    ActionEntry* entry(const QString& name) const { return control<ActionEntry>(name); }
    bool shows(const QString& name) const { return control<QWidget>(name)->isVisible(); }

    void make();
    void load();
    void tick(const QString& timer) const;
    void trigger(const QString& way);
    void setBox(const QString& name, bool on) const;
    void enter(const QString& name, const QString& password);

    UserStore store() const { return UserStore(m_around->folder.filePath(u"store"_s)); }
    QString stored(const QString& key) const
    {
        return store().GetSetting(u"QuillHarbor"_s, u"main"_s, key, u"(none)"_s);
    }
    QString autostart() const { return m_around->folder.filePath(u"autostart"_s); }
    bool startsAtLogin() const
    {
        return QFile::exists(autostart() + "/QuillHarborMessenger.desktop"_L1);
    }
    QStringList settingsLines() const;

    std::unique_ptr<TestSurroundings> m_around;
    FakeDesk m_desk;
    std::unique_ptr<RecordingKeyring> m_keyring;
    QStringList m_fatal;
    std::unique_ptr<Handlers> m_handlers;
    std::unique_ptr<Settings> m_settings;
    std::unique_ptr<UserStore> m_store;
    std::unique_ptr<RememberedPassword> m_password;
    std::unique_ptr<RunKey> m_runKey;
    std::unique_ptr<Login> m_login;
};

void LoginTest::init()
{
    m_around = std::make_unique<TestSurroundings>(u"127.0.0.1"_s);
    m_desk = {};
    m_fatal.clear();
    m_keyring.reset();
    make();
}

void LoginTest::cleanup()
{
    m_login.reset();
    QCOMPARE(m_fatal, QStringList()); // whoever wants one takes it
}

// A fresh start of the program on the same folders.
void LoginTest::make()
{
    m_login.reset();
    m_handlers = std::make_unique<Handlers>([this](const QString& text) { m_fatal += text; });
    m_settings = std::make_unique<Settings>(m_around->settingsPath());
    m_store = std::make_unique<UserStore>(store());
    m_runKey = std::make_unique<RunKey>(autostart());
    m_password = std::make_unique<RememberedPassword>(*m_store, [this] { return m_keyring.get(); });
    m_login = std::make_unique<Login>(Login::Parts{m_desk, *m_settings, *m_store, *m_password,
                                                   *m_runKey, m_around->dialogs, m_around->clock},
                                      *m_handlers);
}

void LoginTest::load()
{
    m_login->Form_Load();
    m_login->Show();
    QVERIFY(QTest::qWaitForWindowActive(m_login.get()));
}

QStringList LoginTest::settingsLines() const
{
    QFile file(m_around->settingsPath());
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
    for (QString& line : lines)
        line.remove(u'\r').remove(u' ');
    lines.sort();
    return lines;
}

void LoginTest::tick(const QString& timer) const
{
    auto* ticking = control<QTimer>(timer);
    QVERIFY(ticking->isActive());
    QTimerEvent event(ticking->timerId());
    QCoreApplication::sendEvent(ticking, &event);
}

// The ways into DoSignIn, as the user goes them.
void LoginTest::trigger(const QString& way)
{
    const auto click = [](QWidget* target) { QTest::mouseClick(target, Qt::LeftButton); };
    if (way == "button"_L1)
        click(control<xpButton>(u"cmdSignIn"_s));
    else if (way == "picture"_L1)
        click(control<SvgPicture>(u"Image3"_s));
    else if (way == "name"_L1)
        QTest::keyClick(field(u"Text1"_s), Qt::Key_Return);
    else if (way == "password"_L1)
        QTest::keyClick(field(u"Text2"_s), Qt::Key_Enter);
    else if (way == "menu"_L1)
        entry(u"mnu_Sign"_s)->trigger();
    else
        QFAIL(qPrintable(way));
}

void LoginTest::setBox(const QString& name, bool on) const
{
    QCheckBox* target = box(name);
    if (target->isChecked() != on)
        QTest::mouseClick(target, Qt::LeftButton, {}, QPoint(8, target->height() / 2));
    QCOMPARE(target->isChecked(), on);
}

void LoginTest::enter(const QString& name, const QString& password)
{
    field(u"Text1"_s)->clear();
    field(u"Text2"_s)->clear();
    QTest::keyClicks(field(u"Text1"_s), name);
    QTest::keyClicks(field(u"Text2"_s), password);
}

void LoginTest::loads_data()
{
    QTest::addColumn<QByteArray>("settings");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("password");
    QTest::addColumn<QString>("boxes"); // those that are ticked
    QTest::addColumn<QString>("fields");
    QTest::addColumn<bool>("entry");

    const auto row = [](const char* title, const char* settings, const char* name,
                        const char* password, const char* boxes, const char* fields,
                        bool entry = true) {
        QTest::newRow(title) << QByteArray(settings) << QString::fromLatin1(name)
                             << QString::fromLatin1(password) << QString::fromLatin1(boxes)
                             << QString::fromLatin1(fields) << entry;
    };
    row("first start", "", "", "", "Check3 ChkStartUp", "/");
    row("name and password stored", "[irc]\nPassword=True\n", "anna", "secret",
        "check1 Check3 ChkStartUp", "anna/secret");
    row("name alone", "[irc]\nPassword=True\n", "anna", "", "Check3 ChkStartUp", "anna/");
    row("a stored password ticks its box", "[irc]\nPassword=False\n", "anna", "secret",
        "check1 Check3 ChkStartUp", "anna/secret");
    row("remembering off is not heeded", "[NickName]\nbremnick=False\n", "anna", "",
        "Check3 ChkStartUp", "anna/");
    row("guest", "[irc]\nGuest=True\n", "Guest", "", "check2 Check3 ChkStartUp", "Guest/");
    row("not with the desktop", "[load]\nstartup=False\n", "", "", "Check3", "/", false);
    row("what cannot be read stays off", "[load]\nstartup=perhaps\n[irc]\nPassword=x\nGuest=TRUE\n",
        "Guest", "p", "check1 check2 Check3", "Guest/p", false);
}

void LoginTest::loads()
{
    QFETCH(QByteArray, settings);
    QFETCH(QString, name);
    QFETCH(QString, password);
    QVERIFY(settings.isEmpty() || m_around->writeSettings(settings));
    m_store->SaveSetting(u"QuillHarbor"_s, u"main"_s, u"name"_s, name);
    m_store->SaveSetting(u"QuillHarbor"_s, u"main"_s, u"pass"_s, password);
    load();

    QStringList ticked;
    for (const QString& each : {u"check1"_s, u"check2"_s, u"Check3"_s, u"ChkStartUp"_s})
        ticked += box(each)->isChecked() ? each : QString();
    ticked.removeAll(QString());
    QTEST(ticked.join(u' '), "boxes");
    QTEST(QString(field(u"Text1"_s)->text() + u'/' + field(u"Text2"_s)->text()), "fields");
    QTEST(startsAtLogin(), "entry");
    QCOMPARE(field(u"Text2"_s)->isEnabled(), !box(u"check2"_s)->isChecked());
    QCOMPARE(QFile::exists(m_around->settingsPath()), !settings.isEmpty()); // reading makes none
    QVERIFY(control<QTimer>(u"Timer2"_s)->isActive());
    QVERIFY(!control<QTimer>(u"Timer1"_s)->isActive());
    QVERIFY(shows(u"Image1"_s) && !shows(u"Picture1"_s) && !shows(u"Label6"_s));
}

void LoginTest::previousInstanceChangesNothing()
{
    m_desk.previous = true;
    m_login->show();
    m_login->Form_Load();
    QVERIFY(!m_login->isVisible());
    QVERIFY(box(u"ChkStartUp"_s)->isChecked()); // the load went on
    QCOMPARE(m_desk.calls, QStringList());
}

void LoginTest::signsIn_data()
{
    QTest::addColumn<bool>("resizes");

    QTest::newRow("button") << true;
    QTest::newRow("picture") << true;
    QTest::newRow("name") << true;
    QTest::newRow("menu") << true;
    QTest::newRow("password") << false;
}

void LoginTest::signsIn()
{
    QFETCH(bool, resizes);
    load();
    enter(u"anna"_s, u"secret"_s);
    m_login->resize(500, 700);
    trigger(QString::fromLatin1(QTest::currentDataTag()));

    QCOMPARE(m_desk.calls, sessionStarts);
    QVERIFY(field(u"Text1"_s)->isReadOnly() && field(u"Text2"_s)->isReadOnly());
    QCOMPARE(entry(u"mnu_Sign"_s)->Caption(), u"Sign Out"_s);
    QVERIFY(shows(u"Picture1"_s) && shows(u"Picture2"_s) && !shows(u"Image1"_s));
    QVERIFY(control<QTimer>(u"Timer1"_s)->isActive());
    QVERIFY(shows(u"Text1"_s) && !shows(u"Label6"_s)); // connected only when the socket says so
    QCOMPARE(m_login->size(), resizes ? QSize(toPixels(5415), toPixels(8790)) : QSize(500, 700));
    QCOMPARE(stored(u"name"_s), u"anna"_s);
    QCOMPARE(m_around->dialogs.shown, QStringList());
}

void LoginTest::refusesTheEmptyName()
{
    load();
    enter({}, u"secret"_s);
    setBox(u"check1"_s, true);
    trigger(u"button"_s);

    QCOMPARE(m_around->dialogs.shown, QStringList{u"No NickName|Enter Your NickName"_s});
    QCOMPARE(m_around->dialogs.lastIcon, Dialogs::Icon::Exclamation);
    QCOMPARE(m_desk.calls, QStringList{u"stopRetrying"_s});
    QCOMPARE(entry(u"mnu_Sign"_s)->Caption(), u"Sign In"_s);
    QVERIFY(field(u"Text1"_s)->hasFocus());
    QVERIFY(!field(u"Text1"_s)->isReadOnly() && !field(u"Text2"_s)->isReadOnly());
    QVERIFY(shows(u"Image1"_s) && !shows(u"Picture1"_s));
    QVERIFY(!control<QTimer>(u"Timer1"_s)->isActive());
    // What follows the session's start happens all the same.
    QCOMPARE(stored(u"name"_s), QString());
    QCOMPARE(stored(u"pass"_s), u"secret"_s);
    QVERIFY(settingsLines().contains(u"Password=True"_s));
}

void LoginTest::remembers_data()
{
    QTest::addColumn<bool>("password");
    QTest::addColumn<bool>("name");
    QTest::addColumn<QString>("kept");  // in the store: name/password
    QTest::addColumn<QString>("shown"); // in the fields afterwards
    QTest::addColumn<QString>("session");

    QTest::newRow("both") << true << true << u"anna/secret"_s << u"anna/secret"_s << u"early"_s;
    QTest::newRow("name") << false << true << u"anna/"_s << u"anna/"_s << u"secret"_s;
    QTest::newRow("password") << true << false << u"/secret"_s << u"/secret"_s << u"early"_s;
    QTest::newRow("nothing") << false << false << u"/"_s << u"/"_s << u"secret"_s;
}

void LoginTest::remembers()
{
    QFETCH(bool, password);
    QFETCH(bool, name);
    load();
    // What was remembered before is erased by a sign-in that is not to be remembered.
    enter(u"before"_s, u"early"_s);
    setBox(u"check1"_s, false);
    trigger(u"button"_s);
    m_login->setEntriesLocked(false);
    QCOMPARE(m_login->sessionPassword(), u"early"_s);

    setBox(u"Check3"_s, name);
    setBox(u"check1"_s, password);
    enter(u"anna"_s, u"secret"_s);
    trigger(u"button"_s);
    QTEST(QString(stored(u"name"_s) + u'/' + stored(u"pass"_s)), "kept");
    QTEST(QString(field(u"Text1"_s)->text() + u'/' + field(u"Text2"_s)->text()), "shown");
    QTEST(m_login->sessionPassword(), "session"); // a remembered one leaves the older one standing
    QCOMPARE(box(u"Check3"_s)->isChecked(), name);
    QCOMPARE(box(u"check1"_s)->isChecked(), password);
    const auto word = [](bool on) { return on ? u"True"_s : u"False"_s; };
    QCOMPARE(settingsLines(),
             (QStringList{u"Guest=False"_s, QString(u"Password="_s + word(password)),
                          u"[NickName]"_s, u"[irc]"_s, u"[load]"_s,
                          QString(u"bremnick="_s + word(name)), u"startup=True"_s}));
}

void LoginTest::keyringKeepsThePassword()
{
    m_keyring = std::make_unique<RecordingKeyring>();
    load();
    enter(u"anna"_s, u"old"_s);
    setBox(u"check1"_s, true);
    trigger(u"button"_s);
    QTRY_COMPARE(m_keyring->entry, u"old"_s);
    QTRY_COMPARE(stored(u"pass"_s), QString());

    make();
    load();
    QTRY_COMPARE(field(u"Text2"_s)->text(), u"old"_s);
    QVERIFY(box(u"check1"_s)->isChecked());
    trigger(u"button"_s); // the keyring has it: nothing to tell it
    QCOMPARE(m_keyring->calls, (QStringList{u"write old"_s, u"read"_s}));

    m_login->setEntriesLocked(false);
    enter(u"anna"_s, u"new"_s);
    trigger(u"button"_s);
    setBox(u"check1"_s, false);
    trigger(u"button"_s); // before the keyring has answered
    QTRY_COMPARE(m_keyring->calls.mid(2), (QStringList{u"write new"_s, u"remove"_s}));
    QTRY_COMPARE(m_keyring->entry, QString());
    QTRY_COMPARE(stored(u"passplace"_s), QString());
    make();
    load();
    QCOMPARE(m_keyring->calls.size(), 4); // who remembers nothing does not meet it
    QVERIFY(!box(u"check1"_s)->isChecked());
}

void LoginTest::keyringFails_data()
{
    QTest::addColumn<int>("mood");
    QTest::addColumn<bool>("ends"); // the program, before the keyring has answered

    QTest::newRow("there is none") << int(Mood::Absent) << false;
    QTest::newRow("does not answer") << int(Mood::Silent) << false;
    QTest::newRow("program ends") << int(Mood::Silent) << true;
}

void LoginTest::keyringFails()
{
    QFETCH(int, mood);
    QFETCH(bool, ends);
    m_keyring = std::make_unique<RecordingKeyring>();
    m_keyring->mood = Mood(mood);
    load();
    if (ends)
        m_password->setTimeLimit(1'000'000);
    else
        m_password->setTimeLimit(1);
    enter(u"anna"_s, u"secret"_s);
    setBox(u"check1"_s, true);
    trigger(u"button"_s);
    if (ends)
        m_password->settle();
    QTRY_COMPARE(stored(u"pass"_s), u"secret"_s);

    // What the store holds is there at once, and moves when a keyring is there.
    m_keyring->mood = Mood::Willing;
    make();
    load();
    QCOMPARE(field(u"Text2"_s)->text(), u"secret"_s);
    trigger(u"button"_s);
    QTRY_COMPARE(stored(u"pass"_s), QString());
    QCOMPARE(m_keyring->entry, u"secret"_s);
    QCOMPARE(stored(u"passplace"_s), u"keyring"_s);
}

void LoginTest::keyringAnswersLate()
{
    m_keyring = std::make_unique<RecordingKeyring>();
    m_keyring->entry = u"secret"_s;
    m_keyring->mood = Mood::Silent;
    m_store->SaveSetting(u"QuillHarbor"_s, u"main"_s, u"name"_s, u"anna"_s);
    m_store->SaveSetting(u"QuillHarbor"_s, u"main"_s, u"passplace"_s, u"keyring"_s);
    load();
    QVERIFY(box(u"check1"_s)->isChecked());
    trigger(u"button"_s);
    QCOMPARE(m_desk.calls, sessionStarts); // nobody waits for it
    QCOMPARE(m_keyring->calls, QStringList{u"read"_s});
    m_keyring->late();
    QCOMPARE(field(u"Text2"_s)->text(), u"secret"_s);

    make();
    load();
    m_password->setTimeLimit(1);
    setBox(u"Check3"_s, false);
    setBox(u"Check3"_s, true); // asks no second time
    enter(u"anna"_s, u"typed"_s);
    m_keyring->late();
    QCOMPARE(field(u"Text2"_s)->text(), u"typed"_s);
}

void LoginTest::startsWithTheDesktop()
{
    load();
    QVERIFY(startsAtLogin());
    setBox(u"ChkStartUp"_s, false);
    QVERIFY(!startsAtLogin());
    setBox(u"ChkStartUp"_s, true);
    QVERIFY(startsAtLogin());

    QVERIFY(QFile::remove(autostart() + "/QuillHarborMessenger.desktop"_L1));
    enter(u"anna"_s, {});
    trigger(u"button"_s);
    QVERIFY(startsAtLogin()); // each sign-in writes it anew
}

void LoginTest::entryOfAnotherRunStays()
{
    load();
    QVERIFY(startsAtLogin());
    QVERIFY(m_around->writeSettings("[load]\nstartup=False\n"));
    make();
    load();
    enter(u"anna"_s, {});
    trigger(u"button"_s);
    QCOMPARE(m_desk.calls, sessionStarts);
    QVERIFY(startsAtLogin()); // nothing has opened the key in this run
}

void LoginTest::lockedAutostartEndsTheSignIn()
{
    QFile file(autostart()); // where the folder would be
    QVERIFY(file.open(QIODevice::WriteOnly));
    load();
    QVERIFY(box(u"ChkStartUp"_s)->isChecked());
    enter(u"anna"_s, u"secret"_s);
    trigger(u"button"_s);
    QCOMPARE(m_desk.calls, sessionStarts);             // the attempt has begun
    QCOMPARE(m_login->sessionPassword(), u"secret"_s); // this step came before
    QCOMPARE(stored(u"name"_s), u"(none)"_s);
    QVERIFY(!QFile::exists(m_around->settingsPath()));
}

void LoginTest::boxesAct()
{
    m_store->SaveSetting(u"QuillHarbor"_s, u"main"_s, u"name"_s, u"anna"_s);
    m_store->SaveSetting(u"QuillHarbor"_s, u"main"_s, u"pass"_s, u"secret"_s);
    load();
    setBox(u"check1"_s, false);
    setBox(u"Check3"_s, false);
    QCOMPARE(field(u"Text1"_s)->text(), QString());
    QCOMPARE(field(u"Text2"_s)->text(), u"secret"_s); // the name alone goes
    field(u"Text2"_s)->clear();
    setBox(u"Check3"_s, true);
    QCOMPARE(field(u"Text1"_s)->text(), u"anna"_s);
    QCOMPARE(field(u"Text2"_s)->text(), u"secret"_s);
    QVERIFY(box(u"check1"_s)->isChecked());

    setBox(u"check2"_s, true);
    QCOMPARE(field(u"Text1"_s)->text(), u"Guest"_s);
    QVERIFY(!field(u"Text2"_s)->isEnabled() && !control<QLabel>(u"Label4"_s)->isEnabled());
    setBox(u"check2"_s, false);
    QCOMPARE(field(u"Text1"_s)->text(), QString());
    QVERIFY(field(u"Text2"_s)->isEnabled() && control<QLabel>(u"Label4"_s)->isEnabled());
}

void LoginTest::pastedLineEndsTheName()
{
    load();
    for (const QString& name : {u"Text1"_s, u"Text2"_s}) {
        QGuiApplication::clipboard()->setText(u"anna\r\nQUIT\n"_s);
        field(name)->setFocus();
        QTest::keyClick(field(name), Qt::Key_V, Qt::ControlModifier);
        QVERIFY(field(name)->text().startsWith("anna"_L1));
    }
    // A line end in a nickname or password would end the line that carries it to the server.
    QVERIFY(!m_login->nickname().contains(u'\n') && !m_login->nickname().contains(u'\r'));
    trigger(u"button"_s);
    QVERIFY(!m_login->sessionPassword().contains(u'\n'));
    QVERIFY(!m_login->sessionPassword().contains(u'\r'));
}

void LoginTest::looksConnected()
{
    const auto visible = [this] {
        QString names;
        for (const char* name : {"Label3", "Text1", "Label4", "Text2", "check1", "check2", "Check3",
                                 "ChkStartUp", "Label6", "Image1", "Picture1"})
            names += shows(QLatin1StringView(name)) ? QLatin1StringView(name) + u' ' : QString();
        return names;
    };
    load();
    const QString before = visible();
    enter(u"anna"_s, {});
    trigger(u"button"_s);
    m_desk.calls.clear();
    m_login->Login_Log();
    QCOMPARE(visible(), u"Label6 Picture1 "_s);

    // Signing in while connected only says so, whether anybody sees the form or not.
    const QStringList settings = settingsLines();
    for (const QString& way : {u"button"_s, u"picture"_s})
        trigger(way);
    m_login->hide();
    m_login->cmdSignIn_Click();
    QCOMPARE(m_desk.calls, QStringList(3, u"showPopup"_s));
    QCOMPARE(settingsLines(), settings);
    m_login->Show();

    m_login->cmdSignout_Click();
    m_login->Login_UnLog();
    QCOMPARE(visible(), before);
    QVERIFY(!control<QTimer>(u"Timer1"_s)->isActive());
}

void LoginTest::signEntryIsTheState()
{
    load();
    ActionEntry* sign = entry(u"mnu_Sign"_s);
    enter(u"anna"_s, u"secret"_s);
    sign->trigger();
    QCOMPARE(sign->Caption(), u"Sign Out"_s);
    QCOMPARE(m_desk.calls, sessionStarts);

    m_desk.calls.clear();
    sign->trigger();
    QCOMPARE(sign->Caption(), u"Sign In"_s);
    QCOMPARE(m_desk.calls, QStringList{u"disconnect"_s});
    QVERIFY(!field(u"Text1"_s)->isReadOnly());
    QVERIFY(field(u"Text2"_s)->isReadOnly()); // the disconnect itself unlocks it
    QVERIFY(shows(u"Image1"_s));

    // A name that is not remembered is gone after the sign-in, and with it the caption.
    m_login->setEntriesLocked(false);
    setBox(u"Check3"_s, false);
    enter(u"anna"_s, {});
    sign->trigger();
    QCOMPARE(sign->Caption(), u"Sign In"_s);

    // Nobody knows another caption.
    m_desk.calls.clear();
    m_login->setSignCaption(u"Sign"_s);
    sign->trigger();
    QCOMPARE(m_desk.calls, QStringList());
}

void LoginTest::wordsOfASession_data()
{
    QTest::addColumn<SessionReport>("report");
    QTest::addColumn<QString>("words");
    using Event = SessionReport::Event;

    const auto row = [](Event event, const char* words, const char* who = "", const char* why = "",
                        const char* server = "irc.example") {
        QTest::newRow(words) << SessionReport{event, QString::fromLatin1(who),
                                              QString::fromLatin1(why), QString::fromLatin1(server)}
                             << QString::fromUtf8(words);
    };
    row(Event::SignedOut, "You are signed out.");
    row(Event::Connecting, "Looking for irc.example ...");
    row(Event::Cancelled, "You gave up the attempt.");
    row(Event::Failed, "No answer from irc.example: Refused. Sign in to try again.", "", "Refused");
    row(Event::Failed,
        "No answer from 127.0.0.1. Sign in to try again. Is your network elsewhere? Choose it with "
        "the link below.",
        "", "", "127.0.0.1");
    row(Event::Connected, "irc.example is there. Waiting to be let in ...");
    row(Event::NickRefused,
        "The name x was refused: In use. Type another one in the box that asks for it. Is it "
        "closed? Choose Sign Out under File and sign in with another name.",
        "x", "In use.");
    row(Event::Welcome, "");
    row(Event::RoomRefused, "It is full.", "", "It is full");
    row(Event::Kicked, "You were kicked by bob: too loud. Sign in to come back.", "bob",
        "\x02\x03"
        "04,12too loud.");
    row(Event::Killed, "somebody ended your session. Sign in to come back.");
    row(Event::ServerClosed, "irc.example closed the connection. Sign in to come back.");
}

void LoginTest::wordsOfASession()
{
    QFETCH(SessionReport, report);
    load();
    m_login->showReport(report);
    QTEST(control<QLabel>(u"lblSession"_s)->text(), "words");
    if (report.event != SessionReport::Event::Failed)
        return;
    report.nextTry.setRemainingTime(9'500);
    m_login->showReport(report);
    QVERIFY(control<QLabel>(u"lblSession"_s)->text().contains(u". Next try in 10 s."_s));
}

void LoginTest::stripLeapfrogs()
{
    load();
    enter(u"anna"_s, {});
    trigger(u"button"_s);
    const auto* first = control<SvgPicture>(u"Picture1"_s);
    const auto* second = control<SvgPicture>(u"Picture2"_s);
    const QWidget* band = first->parentWidget();
    QCOMPARE(toTwips(second->x()), 14040);
    QCOMPARE(toTwips(first->width()), 23040);
    int leaps = 0;
    for (int i = 0; i < 400; ++i) {
        const int firstBefore = first->x();
        const int secondBefore = second->x();
        tick(u"Timer1"_s);
        // Side by side, from the left edge of the band to its right one.
        QCOMPARE(std::abs(first->x() - second->x()), first->width());
        QVERIFY(std::min(first->x(), second->x()) <= 0);
        QVERIFY(std::max(first->x(), second->x()) + second->width() >= band->width());
        const bool firstLeaps = first->x() > firstBefore;
        const bool secondLeaps = second->x() > secondBefore;
        QVERIFY(!firstLeaps || !secondLeaps);
        leaps += firstLeaps || secondLeaps;
        QCOMPARE(toTwips(firstLeaps ? secondBefore - second->x() : firstBefore - first->x()), 720);
    }
    QCOMPARE(leaps, 400 / 32);
}

void LoginTest::sizeHoldsWhileTheStripRuns()
{
    const QSize running(toPixels(5415), toPixels(8550));
    load();
    m_login->resize(600, 700);
    QCOMPARE(m_login->size(), QSize(600, 700));
    enter(u"anna"_s, {});
    trigger(u"button"_s);
    m_login->resize(600, 700);
    QTRY_COMPARE(m_login->size(), running);
    m_login->resize(310, 490);
    QTRY_COMPARE(m_login->size(), running);

    m_login->showMaximized();
    QTRY_VERIFY(m_login->width() > 600); // a maximised window is left alone
    m_login->showNormal();
    QTRY_COMPARE(m_login->size(), running);

    m_login->cmdSignout_Click();
    m_login->resize(600, 700);
    QCOMPARE(m_login->size(), QSize(600, 700));
}

QTEST_MAIN(LoginTest)
#include "tst_login.moc"
