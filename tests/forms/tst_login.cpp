#include "account/Login.h"
#include "account/LoginDesk.h"
#include "controls/ActionEntry.h"
#include "controls/SvgPicture.h"
#include "controls/xpButton.h"
#include "platform/Handlers.h"
#include "platform/Resources.h"
#include "settings/RememberedPassword.h"
#include "settings/RunKey.h"
#include "settings/Settings.h"
#include "settings/UserStore.h"
#include "support/Script.h"
#include "support/TestSurroundings.h"

#include <QtTest>
#include <QtWidgets>

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

    void read(const QString& name, Told told) override
    {
        // Under another name nobody would find what an older program has put in.
        calls += name == "remembered password"_L1 ? u"read"_s : "read "_L1 + name;
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

} // namespace

// The sign-in form: what it makes of what is stored, what it stores, and its steps into a session.
class LoginTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        loadResources();
        m_script.afterLook = [this](const QString& look) {
            if (look == "calls"_L1)
                m_desk.calls.clear();
            if (look == "asked"_L1)
                m_keyring->calls.clear();
        };
    }
    void init()
    {
        m_around = std::make_unique<TestSurroundings>(u"127.0.0.1"_s);
        m_desk = {};
        m_fatal.clear();
        m_keyring.reset();
        make();
    }
    void cleanup()
    {
        m_login.reset();
        QCOMPARE(m_fatal, QStringList()); // whoever wants one takes it
    }

    void uses_data()
    {
        const Scenes row;

        const QString atRest = u"|?stripe no|?clock runs|?starts "_s;
        row("first start",
            "load|?fields /|?ticked Check3 ChkStartUp|?settings "_L1 + atRest + "yes"_L1);
        row("name and password stored",
            "settings [irc]\nPassword=True\n|stored name anna|stored pass secret|load|"
            "?fields anna/secret|?ticked check1 Check3 ChkStartUp|?settings Password=True [irc]"_L1 +
                atRest + "yes"_L1);
        row("name alone", u"settings [irc]\nPassword=True\n|stored name anna|load|?fields anna/|"
                          "?ticked Check3 ChkStartUp"_s);
        row("a stored password ticks its box",
            u"settings [irc]\nPassword=False\n|stored name anna|stored pass secret|load|"
            "?fields anna/secret|?ticked check1 Check3 ChkStartUp"_s);
        row("remembering off is not heeded",
            u"settings [NickName]\nbremnick=False\n|stored name anna|load|?fields anna/|"
            "?ticked Check3 ChkStartUp"_s);
        row("guest", u"settings [irc]\nGuest=True\n|stored name Guest|load|?fields Guest/|"
                     "?ticked check2 Check3 ChkStartUp|?pale Label4 Text2"_s);
        row("not with the desktop",
            u"settings [load]\nstartup=False\n|load|?ticked Check3|?starts no"_s);
        row("what cannot be read stays off",
            u"settings [load]\nstartup=perhaps\n[irc]\nPassword=x\nGuest=TRUE\n|stored name Guest|"
            "stored pass p|load|?ticked check1 check2 Check3|?fields Guest/p|?starts no"_s);
        row("a second program", u"previous|touch|?seen no|?ticked Check3 ChkStartUp|?calls "_s);

        for (const auto& [way, size] :
             {std::pair(u"button"_s, "361 586"_L1), std::pair(u"picture"_s, "361 586"_L1),
              std::pair(u"name"_s, "361 586"_L1), std::pair(u"menu"_s, "361 586"_L1),
              std::pair(u"password"_s, "500 700"_L1)})
            row(qPrintable("in by "_L1 + way),
                "load|enter anna/secret|size 500 700|by "_L1 + way +
                    "|?calls stopRetrying loadChannel connect|?locked Text1 Text2|"
                    "?caption Sign Out|?stripe runs|?connected no|?boxes |?stored anna/|?size "_L1 +
                    size);
        // What follows the session's start happens all the same.
        row("no name", u"load|enter /secret|tick check1|by button|?boxes No NickName|"
                       "?calls stopRetrying|?caption Sign In|?locked |?focus Text1|?stripe no|"
                       "?stored /secret"_s);
        // What was remembered before is erased by a sign-in that is not to be remembered; a
        // password that is leaves the older one of the session standing.
        const QString before = u"load|enter before/early|untick check1|by button|unlock|"
                               "?session early|"_s;
        const QString then = u"|enter anna/secret|by button|"_s;
        const auto file = [](const char* password, const char* name) -> QString {
            return "|?settings Guest=False Password="_L1 + QLatin1StringView(password) +
                   " [NickName] [irc] [load] bremnick="_L1 + QLatin1StringView(name) +
                   " startup=True"_L1;
        };
        row("remembers both", before + "tick Check3|tick check1"_L1 + then +
                                  "?stored anna/secret|?fields anna/secret|?session early"_L1 +
                                  file("True", "True"));
        row("remembers the name", before + "tick Check3|untick check1"_L1 + then +
                                      "?stored anna/|?fields anna/|?session secret"_L1 +
                                      file("False", "True"));
        row("remembers the password", before + "untick Check3|tick check1"_L1 + then +
                                          "?stored /secret|?fields /secret|?session early"_L1 +
                                          file("True", "False"));
        row("remembers nothing", before + "untick Check3|untick check1"_L1 + then +
                                     "?stored /|?fields /|?session secret"_L1 +
                                     file("False", "False"));

        // The keyring; while it has the password the store has none.
        row("keyring keeps it",
            u"keyring willing|load|enter anna/old|tick check1|by button|?ring old|?stored anna/|"
            "again|?fields anna/old|?ticked check1 Check3 ChkStartUp|by button|"
            "?asked write old, read|unlock|enter anna/new|by button|untick check1|by button|"
            "?asked write new, remove|?ring |?place |again|?asked |"
            "?ticked Check3 ChkStartUp"_s);
        const QString moves = u"?stored anna/secret|keyring willing|again|?fields anna/secret|"
                              "by button|?stored anna/|?ring secret|?place keyring"_s;
        row("there is no keyring", "keyring absent|load|limit 1|enter anna/secret|tick check1|"
                                   "by button|"_L1 +
                                       moves);
        row("keyring does not answer", "keyring silent|load|limit 1|enter anna/secret|tick check1|"
                                       "by button|"_L1 +
                                           moves);
        row("the program ends before it answers",
            "keyring silent|load|limit 1000000|enter anna/secret|tick check1|by button|settle|"_L1 +
                moves);
        row("nobody waits for the keyring",
            u"keyring silent|ring secret|stored name anna|stored passplace keyring|load|"
            "?ticked check1 Check3 ChkStartUp|by button|"
            "?calls stopRetrying loadChannel connect|?asked read|late|?fields anna/secret"_s);
        row("what is typed meanwhile stays",
            u"keyring silent|ring secret|stored name anna|stored passplace keyring|load|limit 1|"
            "untick Check3|tick Check3|?asked read|enter anna/typed|late|?fields anna/typed"_s);

        row("entry goes and comes", u"load|?starts yes|untick ChkStartUp|?starts no|"
                                    "tick ChkStartUp|?starts yes|lose entry|enter anna/|by button|"
                                    "?starts yes"_s);
        // Nothing has opened the key in this run.
        row("entry of another run stays", u"load|settings [load]\nstartup=False\n|again|"
                                          "enter anna/|by button|?starts yes"_s);
        // The attempt has begun, and the password is the session's.
        row("no place for the entry", u"wall|load|?ticked Check3 ChkStartUp|enter anna/secret|"
                                      "by button|?calls stopRetrying loadChannel connect|"
                                      "?session secret|?stored (none)/(none)|?settings "_s);

        row("boxes act", u"stored name anna|stored pass secret|load|untick check1|untick Check3|"
                         "?fields /secret|enter /|tick Check3|?fields anna/secret|"
                         "?ticked check1 Check3 ChkStartUp|tick check2|?fields Guest/secret|"
                         "?pale Label4 Text2|untick check2|?fields /secret|?pale "_s);
        // A line end in a name or a password would end the line that carries it to the server.
        row("pasted lines", u"load|paste Text1 anna\r\nQUIT\n|paste Text2 a\r\nQUIT\n|"
                            "?fields anna QUIT/a QUIT|by button|?session a QUIT"_s);

        // Signing in while connected only says so, whether anybody sees the form or not.
        row("connected",
            u"load|?controls Label3 Text1 Label4 Text2 check1 check2 Check3 ChkStartUp|"
            "enter anna/|by button|?calls stopRetrying loadChannel connect|"
            "connected|?connected yes|?controls |by button|by picture|hide|"
            "by routine|?calls showPopup showPopup showPopup|show|disconnected|"
            "?connected no|?stripe no|"
            "?controls Label3 Text1 Label4 Text2 check1 check2 Check3 ChkStartUp"_s);
        // The disconnect itself unlocks the other one.
        row("the entry's caption is its state",
            u"load|enter anna/secret|by menu|?caption Sign Out|"
            "?calls stopRetrying loadChannel connect|by menu|?caption Sign In|?calls disconnect|"
            "?locked Text2|?stripe no|caption Sign|by menu|?calls "_s);
        row("a name that is not remembered takes the caption along",
            u"load|untick Check3|enter anna/|by menu|?caption Sign In"_s);
        row("size holds while the strip runs",
            u"load|size 600 700|?size 600 700|enter anna/|by button|size 600 700|?size 361 570|"
            "size 310 490|?size 361 570|disconnected|size 600 700|?size 600 700"_s);
    }
    void uses()
    {
        QFETCH(QString, script);
        m_script.play(script);
    }

    void wordsOfASession_data()
    {
        QTest::addColumn<SessionReport>("report");
        QTest::addColumn<QString>("words");
        using Event = SessionReport::Event;

        const auto row = [](Event event, const char* words, const char* who = "",
                            const char* why = "", const char* server = "irc.example") {
            QTest::newRow(words) << SessionReport{event, QString::fromLatin1(who),
                                                  QString::fromLatin1(why),
                                                  QString::fromLatin1(server)}
                                 << QString::fromUtf8(words);
        };
        row(Event::SignedOut, "You are signed out.");
        row(Event::Connecting, "Looking for irc.example ...");
        row(Event::Cancelled, "You gave up the attempt.");
        row(Event::Failed, "No answer from irc.example: Refused. Sign in to try again.", "",
            "Refused");
        row(Event::Failed,
            "No answer from 127.0.0.1. Sign in to try again. Is your network elsewhere? Choose it "
            "with the link below.",
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

    void wordsOfASession()
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

    void stripLeapfrogs()
    {
        load();
        enter(u"anna"_s, {});
        m_ways[u"button"_s]();
        const auto* first = control<SvgPicture>(u"Picture1"_s);
        const auto* second = control<SvgPicture>(u"Picture2"_s);
        const QWidget* band = first->parentWidget();
        int leaps = 0;
        for (int i = 0; i < 400; ++i) {
            const int before = first->x();
            tick(u"Timer1"_s);
            // Side by side, from the left edge of the band to its right one.
            QCOMPARE(std::abs(first->x() - second->x()), first->width());
            QVERIFY(std::min(first->x(), second->x()) <= 0);
            QVERIFY(std::max(first->x(), second->x()) + second->width() >= band->width());
            leaps += first->x() > before;
        }
        QCOMPARE(leaps, 400 / 64);
    }

private:
    template<typename T>
    T* control(const QString& name) const
    {
        T* found = m_login->findChild<T*>(name);
        Q_ASSERT(found);
        return found;
    }
    QLineEdit* field(const QString& name) const { return control<QLineEdit>(name); }
    bool shows(const QString& name) const { return control<QWidget>(name)->isVisible(); }
    // Those of these controls of which something is true.
    QString those(const QString& names, const std::function<bool(QWidget*)>& test) const
    {
        QStringList found = names.split(u' ');
        found.removeIf([&](const QString& name) { return !test(control<QWidget>(name)); });
        return found.join(u' ');
    }

    // A fresh start of the program on the same folders.
    void make()
    {
        m_login.reset();
        m_handlers = std::make_unique<Handlers>([this](const QString& text) { m_fatal += text; });
        m_settings = std::make_unique<Settings>(m_around->settingsPath());
        m_store = std::make_unique<UserStore>(store());
        m_runKey = std::make_unique<RunKey>(autostart());
        m_password =
            std::make_unique<RememberedPassword>(*m_store, [this] { return m_keyring.get(); });
        m_login =
            std::make_unique<Login>(Login::Parts{m_desk, *m_settings, *m_store, *m_password,
                                                 *m_runKey, m_around->dialogs, m_around->clock},
                                    *m_handlers);
    }

    void load()
    {
        m_login->Form_Load();
        m_login->Show();
        QVERIFY(QTest::qWaitForWindowActive(m_login.get()));
    }

    QStringList settingsLines() const
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

    void tick(const QString& timer) const
    {
        auto* ticking = control<QTimer>(timer);
        QVERIFY(ticking->isActive());
        QTimerEvent event(ticking->timerId());
        QCoreApplication::sendEvent(ticking, &event);
    }

    void setBox(const QString& name, bool on) const
    {
        auto* box = control<QCheckBox>(name);
        if (box->isChecked() != on)
            QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(8, box->height() / 2));
        QCOMPARE(box->isChecked(), on);
    }
    void enter(const QString& name, const QString& password) const
    {
        field(u"Text1"_s)->clear();
        field(u"Text2"_s)->clear();
        QTest::keyClicks(field(u"Text1"_s), name);
        QTest::keyClicks(field(u"Text2"_s), password);
    }
    UserStore store() const { return UserStore(m_around->folder.filePath(u"store"_s)); }
    QString stored(const QString& key) const
    {
        return store().GetSetting(u"QuillHarbor"_s, u"main"_s, key, u"(none)"_s);
    }
    QString autostart() const { return m_around->folder.filePath(u"autostart"_s); }
    QString entry() const { return autostart() + "/QuillHarborMessenger.desktop"_L1; }

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

    const QHash<QString, std::function<void()>> m_ways{
        {u"button"_s,
         [this] { QTest::mouseClick(control<xpButton>(u"cmdSignIn"_s), Qt::LeftButton); }},
        {u"picture"_s,
         [this] { QTest::mouseClick(control<SvgPicture>(u"Image3"_s), Qt::LeftButton); }},
        {u"name"_s, [this] { QTest::keyClick(field(u"Text1"_s), Qt::Key_Return); }},
        {u"password"_s, [this] { QTest::keyClick(field(u"Text2"_s), Qt::Key_Enter); }},
        {u"menu"_s, [this] { control<ActionEntry>(u"mnu_Sign"_s)->trigger(); }},
        {u"routine"_s, [this] { m_login->cmdSignIn_Click(); }},
    };
    Script m_script{
        {
            {u"settings"_s,
             [this](const QString& text) { QVERIFY(m_around->writeSettings(text.toUtf8())); }},
            {u"stored"_s,
             [this](const QString& entry) {
                 m_store->SaveSetting(u"QuillHarbor"_s, u"main"_s, entry.section(u' ', 0, 0),
                                      entry.section(u' ', 1));
             }},
            {u"keyring"_s,
             [this](const QString& mood) {
                 if (!m_keyring)
                     m_keyring = std::make_unique<RecordingKeyring>();
                 m_keyring->mood = mood == "willing"_L1  ? Mood::Willing
                                   : mood == "silent"_L1 ? Mood::Silent
                                                         : Mood::Absent;
             }},
            {u"ring"_s, [this](const QString& password) { m_keyring->entry = password; }},
            {u"late"_s, [this](auto) { m_keyring->late(); }},
            {u"limit"_s, [this](const QString& limit) { m_password->setTimeLimit(limit.toInt()); }},
            {u"settle"_s, [this](auto) { m_password->settle(); }},
            {u"previous"_s,
             [this](auto) {
                 m_desk.previous = true;
                 m_login->show();
             }},
            {u"wall"_s, [this](auto) { QVERIFY(QFile(autostart()).open(QIODevice::WriteOnly)); }},
            {u"lose"_s, [this](auto) { QVERIFY(QFile::remove(entry())); }},
            {u"load"_s, [this](auto) { load(); }},
            {u"touch"_s, [this](auto) { m_login->Form_Load(); }},
            {u"again"_s,
             [this](auto) {
                 make();
                 load();
             }},
            {u"enter"_s,
             [this](const QString& both) {
                 enter(both.section(u'/', 0, 0), both.section(u'/', 1));
             }},
            {u"paste"_s,
             [this](const QString& what) {
                 QLineEdit* target = field(what.section(u' ', 0, 0));
                 target->clear();
                 QGuiApplication::clipboard()->setText(what.section(u' ', 1));
                 QTest::keyClick(target, Qt::Key_V, Qt::ControlModifier);
             }},
            {u"tick"_s, [this](const QString& name) { setBox(name, true); }},
            {u"untick"_s, [this](const QString& name) { setBox(name, false); }},
            {u"by"_s, [this](const QString& way) { m_ways[way](); }},
            {u"unlock"_s, [this](auto) { m_login->setEntriesLocked(false); }},
            {u"connected"_s, [this](auto) { m_login->Login_Log(); }},
            {u"disconnected"_s,
             [this](auto) {
                 m_login->cmdSignout_Click();
                 m_login->Login_UnLog();
             }},
            {u"caption"_s, [this](const QString& caption) { m_login->setSignCaption(caption); }},
            {u"hide"_s, [this](auto) { m_login->hide(); }},
            {u"show"_s, [this](auto) { m_login->Show(); }},
            {u"size"_s,
             [this](const QString& size) {
                 m_login->resize(size.section(u' ', 0, 0).toInt(), size.section(u' ', 1).toInt());
             }},
        },
        {
            {u"fields"_s,
             [this] {
                 return QString(field(u"Text1"_s)->text() + u'/' + field(u"Text2"_s)->text());
             }},
            {u"ticked"_s,
             [this] {
                 return those(u"check1 check2 Check3 ChkStartUp"_s, [](QWidget* box) {
                     return qobject_cast<QCheckBox*>(box)->isChecked();
                 });
             }},
            {u"pale"_s,
             [this] {
                 return those(u"Label4 Text2"_s, [](QWidget* each) { return !each->isEnabled(); });
             }},
            {u"locked"_s,
             [this] {
                 return those(u"Text1 Text2"_s, [](QWidget* each) {
                     return qobject_cast<QLineEdit*>(each)->isReadOnly();
                 });
             }},
            {u"controls"_s,
             [this] {
                 return those(u"Label3 Text1 Label4 Text2 check1 check2 Check3 ChkStartUp"_s,
                              [](QWidget* each) { return each->isVisible(); });
             }},
            {u"connected"_s, [this] { return shows(u"Label6"_s) ? u"yes"_s : u"no"_s; }},
            {u"seen"_s, [this] { return m_login->isVisible() ? u"yes"_s : u"no"_s; }},
            {u"focus"_s, [this] { return m_login->focusWidget()->objectName(); }},
            {u"caption"_s, [this] { return control<ActionEntry>(u"mnu_Sign"_s)->Caption(); }},
            {u"stripe"_s,
             [this] {
                 const bool runs = control<QTimer>(u"Timer1"_s)->isActive();
                 const bool looksSo =
                     shows(u"Picture1"_s) && shows(u"Picture2"_s) && !shows(u"Image1"_s);
                 const bool shown = shows(u"Picture1"_s) || shows(u"Picture2"_s);
                 return runs && looksSo ? u"runs"_s : runs || shown ? u"odd"_s : u"no"_s;
             }},
            {u"clock"_s,
             [this] { return control<QTimer>(u"Timer2"_s)->isActive() ? u"runs"_s : u"rests"_s; }},
            {u"size"_s,
             [this] {
                 return QString(QString::number(m_login->width()) + u' ' +
                                QString::number(m_login->height()));
             }},
            {u"calls"_s, [this] { return m_desk.calls.join(u' '); }},
            {u"boxes"_s, [this] { return m_around->dialogs.shown.join(u' ').section(u'|', 0, 0); }},
            {u"session"_s, [this] { return m_login->sessionPassword(); }},
            {u"stored"_s, [this] { return QString(stored(u"name"_s) + u'/' + stored(u"pass"_s)); }},
            {u"place"_s, [this] { return stored(u"passplace"_s); }},
            {u"ring"_s, [this] { return m_keyring->entry; }},
            {u"asked"_s, [this] { return m_keyring->calls.join(u", "_s); }},
            {u"starts"_s, [this] { return QFile::exists(entry()) ? u"yes"_s : u"no"_s; }},
            {u"settings"_s, [this] { return settingsLines().join(u' '); }},
        }};
};

QTEST_MAIN(LoginTest)
#include "tst_login.moc"
