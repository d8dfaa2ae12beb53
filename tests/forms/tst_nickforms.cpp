#include "account/NickForms.h"
#include "platform/Resources.h"
#include "support/RecordingDesk.h"
#include "support/TestSurroundings.h"

#include <QtTest>
#include <QtWidgets>

using namespace Qt::StringLiterals;

namespace {

struct Host final : NickFormHost
{
    bool channelEnabled = true;
    QWidget* flashed = nullptr;

    void setChannelEnabled(bool enabled) override { channelEnabled = enabled; }
    void FlashWindow(QWidget& window) override { flashed = &window; }
};

struct Scene
{
    RecordingDesk desk;
    Host host;
    NickForms forms{NickFormDesk{desk.variables, desk.room, desk.connection, desk.commands,
                                 desk.login, desk.dialogs, host, desk.handlers}};

    Scene() { desk.enterRoom(); }
};

QLineEdit* field(const Form* form, const char* name = "Text1")
{
    return form->findChild<QLineEdit*>(QLatin1StringView(name));
}

void press(const Form* form, const char* button)
{
    QTest::mouseClick(form->findChild<QWidget*>(QLatin1StringView(button)), Qt::LeftButton);
}

// By its button, or by Enter in its field.
void accept(const Form* form, const char* button, bool byKey)
{
    if (byKey)
        QTest::keyClick(field(form), Qt::Key_Return);
    else
        press(form, button);
}

} // namespace

// The small forms around the own nick.
class tst_NickForms : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { loadResources(); }

    void password()
    {
        for (const bool byKey : {false, true}) {
            Scene scene;
            scene.forms.showPassword();
            const auto* form = shown<frmPassword>();
            QVERIFY(!scene.host.channelEnabled);
            QCOMPARE(form->findChild<QLabel*>(u"lblusr"_s)->text(), u"NickName : me"_s);
            QCOMPARE(field(form)->echoMode(), QLineEdit::Password);
            accept(form, "cmdOk", byKey);
            QVERIFY(shown<frmPassword>()); // nothing typed
            QTest::keyClicks(field(form), u"open sesame"_s);
            accept(form, "cmdOk", byKey);
            QCOMPARE(scene.desk.take(),
                     RecordingDesk::expected("<< IDENTIFY open sesame\nlstNicks.Enabled=true"));
            QVERIFY(!shown<frmPassword>());
            QVERIFY(scene.host.channelEnabled);
        }
    }

    void newNickInsteadOfPassword()
    {
        Scene scene;
        scene.forms.showPassword();
        press(shown<frmPassword>(), "cmdChange");
        QVERIFY(!shown<frmPassword>() && shown<usenick>());
        QVERIFY(!scene.host.channelEnabled); // one of the forms still stands
        QTest::keyClicks(field(shown<usenick>()), u"carol"_s);
        press(shown<usenick>(), "cmdOk");
        QVERIFY(scene.host.channelEnabled);
    }

    void newPasswordIsFatal()
    {
        Scene scene;
        scene.desk.variables.MyNick = u"me[*]"_s;
        scene.desk.sock.setState(Winsock::Connecting);
        scene.forms.mnu_File_changepass_Click();
        QVERIFY(!shown<frmPassword>());
        scene.desk.sock.setState(Winsock::Connected);
        scene.forms.mnu_File_changepass_Click();
        const auto* form = shown<frmPassword>();
        QCOMPARE(form->windowHandle()->title(), u"Change Your Password For me[*]"_s);
        press(form, "cmdOk");
        QCOMPARE(scene.desk.take(), QStringList());
        QTest::keyClicks(field(form), u"secret"_s);
        press(form, "cmdOk");
        QCOMPARE(scene.desk.take(),
                 QStringList{u"FATAL Run-time error '424':\n\nObject required"_s});
    }

    void flashing()
    {
        Scene scene;
        scene.forms.showPassword();
        auto* flsh = shown<frmPassword>()->findChild<QTimer*>(u"flsh"_s);
        QCOMPARE(flsh->interval(), 1200);
        flsh->setInterval(0);
        QTRY_COMPARE(scene.host.flashed, shown<frmPassword>());
        scene.forms.unloadPassword();
        QVERIFY(!flsh->isActive());
    }

    void otherNick()
    {
        for (const auto& [refused, byKey] : {std::pair(true, false), std::pair(true, true),
                                             std::pair(false, false), std::pair(false, true)}) {
            Scene scene;
            scene.desk.sock.setState(Winsock::Connecting); // need not stand
            if (refused)
                scene.forms.showUseNick();
            else
                scene.forms.mnu_File_changenick_Click();
            const auto* form = shown<Form>();
            const char* button = refused ? "cmdOk" : "cmdOK";
            QVERIFY(!scene.host.channelEnabled);
            accept(form, button, byKey);
            QVERIFY(form->isVisible());
            const QString complaint = u"box|Type A Nick Name|No NickName Given"_s;
            QCOMPARE(scene.desk.take(), refused ? QStringList() : QStringList{complaint});
            field(form)->setText(u"carol\r\nQUIT :x"_s); // as a paste may bring it
            accept(form, button, byKey);
            QVERIFY(!shown<Form>());
            QCOMPARE(scene.desk.take(), QStringList{u"<< NICK carol"_s});
            QCOMPARE(scene.desk.variables.MyNick, u"carol"_s);
            QCOMPARE(scene.desk.login.Text1, u"carol"_s);
            QVERIFY(scene.host.channelEnabled);
        }
    }

    void heldChannel()
    {
        Scene scene;
        scene.forms.mnu_File_changenick_Click();
        scene.forms.showUseNick();
        shown<usenick>()->close();
        QVERIFY(!scene.host.channelEnabled);
        shown<frmchange>()->close();
        QVERIFY(scene.host.channelEnabled);
        scene.forms.mnu_register_nickname_Click();
        QVERIFY(scene.host.channelEnabled); // this one holds nothing
    }

    void registration_data()
    {
        QTest::addColumn<QString>("password");
        QTest::addColumn<QString>("address");
        QTest::addColumn<QString>("log");
        const QString noPassword = u"box|Enter Your NickName Password|No Password"_s;
        const QString noAddress = u"box|Enter Your E-mail Address|No E-mail Address"_s;
        QTest::newRow("complete") << u"pw"_s << u"me@example.org"_s
                                  << u"<< PRIVMSG nickserv :register pw me@example.org "_s;
        QTest::newRow("no password") << QString() << u"me@example.org"_s << noPassword;
        QTest::newRow("no address") << u"pw"_s << QString() << noAddress;
        QTest::newRow("nothing") << QString() << QString()
                                 << QString(noPassword + u'\n' + noAddress);
    }
    void registration()
    {
        QFETCH(QString, password);
        QFETCH(QString, address);
        Scene scene;
        scene.forms.mnu_register_nickname_Click();
        const auto* form = shown<frmregister>();
        QCOMPARE(field(form)->text(), u"me"_s);
        QCOMPARE(field(form, "Text2")->echoMode(), QLineEdit::Password);
        field(form)->setText(u"somebody"_s); // no other nick can be registered
        QTest::keyClicks(field(form, "Text2"), password);
        QTest::keyClicks(field(form, "Text3"), address);
        press(form, "cmdRegister");
        QTEST(scene.desk.take().join(u'\n'), "log");
        QCOMPARE(field(form)->text(), u"me"_s);
        QVERIFY(!shown<frmregister>());
    }

    void registrationNeedsConnection()
    {
        Scene scene;
        scene.desk.sock.setState(Winsock::Connecting);
        scene.forms.mnu_register_nickname_Click();
        QVERIFY(!shown<frmregister>());
        QCOMPARE(scene.desk.take(),
                 QStringList{u"box|Not Connected|Check Your Internet Connection. You are not "
                             u"connected to register your nickname."_s});
        scene.desk.sock.setState(Winsock::Connected);
        scene.forms.mnu_register_nickname_Click();
        scene.desk.sock.setState(Winsock::Closed);
        press(shown<frmregister>(), "cmdRegister");
        QCOMPARE(scene.desk.take(),
                 QStringList{u"box|Not Connected|Check Your Internet Connection.You are not "
                             u"connected to register your nickname."_s});
        QVERIFY(shown<frmregister>());
        press(shown<frmregister>(), "cmdCancel");
        QVERIFY(!shown<frmregister>());
        QCOMPARE(scene.desk.take(), QStringList());
    }

    // A box lets other events run: the form goes, and is gone for good, before its handler ends.
    void registrationCancelledBehindTheCommand()
    {
        Scene scene;
        scene.forms.mnu_register_nickname_Click();
        QPointer<Form> form = shown<frmregister>();
        QTest::keyClicks(field(form, "Text2"), u"pw"_s);
        scene.desk.dialogs.whileOpen = [&] {
            scene.forms.unloadRegister();
            QCoreApplication::sendPostedEvents(form, QEvent::DeferredDelete);
            QVERIFY(form && !form->isVisible());
        };
        QTimer::singleShot(0, form, [form] { press(form, "cmdRegister"); });
        QTRY_VERIFY(!form);
        QCOMPARE(scene.desk.take().size(), 1);
    }

    void keysInAForm()
    {
        Scene scene;
        scene.forms.mnu_register_nickname_Click();
        auto* form = shown<frmregister>();
        QVERIFY(QTest::qWaitForWindowActive(form));
        form->findChild<QWidget*>(u"cmdCancel"_s)->setFocus();
        QTest::keyClick(form->focusWidget(), Qt::Key_Return);
        QVERIFY(!shown<frmregister>());
    }
};

QTEST_MAIN(tst_NickForms)
#include "tst_nickforms.moc"
