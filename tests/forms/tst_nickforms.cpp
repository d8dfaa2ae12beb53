#include "account/NickForms.h"
#include "platform/Resources.h"
#include "support/RecordingDesk.h"
#include "support/TestSurroundings.h"

#include <QtTest>
#include <QtWidgets>

using namespace Qt::StringLiterals;

namespace {

struct Scene final : NickFormHost
{
    RecordingDesk desk;
    NickForms forms{NickFormDesk{desk.variables, desk.room, desk.connection, desk.commands,
                                 desk.login, desk.dialogs, *this, desk.handlers}};

    Scene()
    {
        desk.enterRoom();
        const std::pair<QString, void (NickForms::*)()> ways[]{
            {u"showPassword"_s, &NickForms::showPassword},
            {u"changePassword"_s, &NickForms::mnu_File_changepass_Click},
            {u"useNick"_s, &NickForms::showUseNick},
            {u"changeNick"_s, &NickForms::mnu_File_changenick_Click},
            {u"registerNick"_s, &NickForms::mnu_register_nickname_Click},
        };
        for (const auto& [name, show] : ways)
            desk.acts[name] = [this, show = show](auto) { (forms.*show)(); };
        desk.acts[u"paste"_s] = [](auto fieldAndText) {
            auto* field = shown<Form>()->findChild<QLineEdit*>(fieldAndText.section(u' ', 0, 0));
            QGuiApplication::clipboard()->setText(fieldAndText.section(u' ', 1));
            field->setFocus();
            field->selectAll();
            pressKeys(field, u"Ctrl+V"_s);
        };
        desk.acts[u"keys"_s] = [](auto names) {
            for (const QString& name : names.split(u' '))
                pressKeys(shown<Form>()->focusWidget(), name);
        };
        desk.acts[u"press"_s] = [](auto button) {
            QTest::mouseClick(shown<Form>()->findChild<QWidget*>(button), Qt::LeftButton);
        };
        desk.acts[u"close"_s] = [](auto) { shown<Form>()->close(); };
        desk.acts[u"closeUseNick"_s] = [](auto) { shown<usenick>()->close(); };
        desk.acts[u"tick"_s] = [](auto) {
            QMetaObject::invokeMethod(shown<Form>()->findChild<QTimer*>(), "timeout");
        };
        desk.looks[u"open"_s] = [] {
            const auto* form = shown<Form>();
            return form ? form->windowHandle()->title() : QString();
        };
        desk.looks[u"flashes"_s] = [] {
            const auto* timer = shown<Form>()->findChild<QTimer*>();
            return QString::number(timer->isActive() ? timer->interval() : 0);
        };
        for (const QString& name : {u"Text1"_s, u"Text2"_s, u"Text3"_s}) {
            desk.looks[name] = [name]() -> QString {
                const auto* field = shown<Form>()->findChild<QLineEdit*>(name);
                const bool isSecret = field->echoMode() == QLineEdit::Password;
                return (isSecret ? u"secret "_s : QString()) + field->text();
            };
        }
        desk.looks[u"login"_s] = [this] { return desk.login.Text1; };
    }

    void setChannelEnabled(bool enabled) override { desk.journal(enabled ? "free" : "held"); }
    void FlashWindow(QWidget& window) override { desk.journal("flash ", window.windowTitle()); }
};

} // namespace

// The small forms around the own nick.
class tst_NickForms : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { loadResources(); }

    void uses_data()
    {
        const Scenes row;
        // By Enter in the field, and by the button.
        row("password",
            u"! showPassword\nheld\n! keys Return\n? open=Enter Your NickName Password\n"
            "! paste Text1 open sesame\n? Text1=secret open sesame\n! keys Return\n"
            "<< IDENTIFY open sesame\nfree\nlstNicks.Enabled=true\n? open=\n"
            "~! showPassword\n~! paste Text1 x\n! press cmdOk\n<< IDENTIFY x\nfree\n"
            "lstNicks.Enabled=true"_s);
        // Neither needs a connection; only the first line of a paste counts.
        row("refused nick",
            u"! state 6\n! useNick\nheld\n! keys Return\n"
            "? open=NickName Already In Use Or Invalid\n"
            "! paste Text1 carol\r{N}QUIT :x\n! keys Return\n<< NICK carol\nfree\n? open=\n"
            "? nick=carol\n? login=carol\n~! useNick\n~! paste Text1 dora\n! press cmdOk\n"
            "<< NICK dora\nfree"_s);
        row("other nick",
            u"! state 6\n! changeNick\nheld\n! keys Return\n"
            "box|Type A Nick Name|No NickName Given\n? open=Change NickName\n! paste Text1 "
            "carol\r{N}QUIT :x\n! keys Return\n"
            "<< NICK carol\nfree\n? open=\n? nick=carol\n~! changeNick\n~! paste Text1 dora\n"
            "! press cmdOK\n<< NICK dora\nfree"_s);
        row("new nick instead of the password",
            u"! showPassword\nheld\n! press cmdChange\nlstNicks.Enabled=true\n"
            "? open=NickName Already In Use Or Invalid\n! close\nfree"_s);
        row("new password is fatal",
            u"! named me[*]\n! state 6\n! changePassword\n? open=\n! state 7\n! changePassword\n"
            "held\n? open=Change Your Password For me[*]\n! press cmdOk\n! paste Text1 secret\n"
            "! press cmdOk\nFATAL Run-time error '424':\nObject required"_s);
        row("flashing", u"! showPassword\nheld\n? flashes=1200\n! tick\n"
                        "flash Enter Your NickName Password"_s);
        row("two hold the main window, one does not",
            u"! changeNick\nheld\n! useNick\n! closeUseNick\n! close\nfree\n! registerNick"_s);

        // Only the own nick can be registered; the form goes even if something was left out.
        row("registered",
            u"! named me\n! registerNick\n? Text1=me\n! paste Text2 pw\n? Text2=secret pw\n"
            "! paste Text3 me@example.org\n! press cmdRegister\n"
            "<< PRIVMSG nickserv :register pw me@example.org \n? open="_s);
        row("something left out",
            u"! registerNick\n! paste Text1 bob\n! whileOpen ? Text1\n! press cmdRegister\n"
            "box|Enter Your NickName Password|No Password\n- Text1=me\n"
            "box|Enter Your E-mail Address|No E-mail Address\n! registerNick\n! paste Text2 pw\n"
            "! press cmdRegister\nbox|Enter Your E-mail Address|No E-mail Address\n"
            "! registerNick\n! paste Text3 me@example.org\n! press cmdRegister\n"
            "box|Enter Your NickName Password|No Password\n? open="_s);
        row("registered while not connected",
            u"! state 6\n! registerNick\nbox|Not Connected|Check Your Internet Connection. You are "
            "not connected to register your nickname.\n? open=\n! state 7\n! registerNick\n"
            "! state 0\n! press cmdRegister\nbox|Not Connected|Check Your Internet Connection.You "
            "are not connected to register your nickname.\n? open=NickName Registration\n"
            "! press cmdCancel\n? open="_s);
        row("a key on a button", u"! registerNick\n! keys Tab Tab Tab Return\n? open="_s);
    }
    void uses()
    {
        QFETCH(QString, script);
        Scene scene;
        QCOMPARE(scene.desk.play(script), QString());
    }

    // A box lets other events run: the form goes, and is gone for good, before its handler ends.
    void registrationCancelledBehindTheCommand()
    {
        Scene scene;
        scene.forms.mnu_register_nickname_Click();
        const QPointer<Form> form = shown<frmregister>();
        scene.desk.dialogs.whileOpen = [&] {
            scene.forms.unloadRegister();
            QCoreApplication::sendPostedEvents(form, QEvent::DeferredDelete);
            QVERIFY(form && !form->isVisible());
        };
        QTimer::singleShot(0, form, [&] { scene.desk.acts[u"press"_s](u"cmdRegister"_s); });
        QTRY_VERIFY(!form);
        QCOMPARE(scene.desk.take().size(), 2);
    }
};

QTEST_MAIN(tst_NickForms)
#include "tst_nickforms.moc"
