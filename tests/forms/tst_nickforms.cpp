#include "account/NickForms.h"
#include "platform/Resources.h"
#include "support/RecordingDesk.h"

#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QTest>

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

// The form of a class that is on the screen.
template<typename T>
T* shown()
{
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        auto* form = qobject_cast<T*>(widget);
        if (form && form->isVisible())
            return form;
    }
    return nullptr;
}

template<typename T>
QLineEdit* field(const QString& name)
{
    return shown<T>()->template findChild<QLineEdit*>(name);
}

template<typename T>
void press(const QString& button)
{
    QTest::mouseClick(shown<T>()->template findChild<QWidget*>(button), Qt::LeftButton);
}

void type(QLineEdit* field, const QString& text)
{
    field->clear();
    QTest::keyClicks(field, text);
}

} // namespace

class tst_NickForms : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { loadResources(); }

    void password_data();
    void password();
    void newNickInsteadOfPassword();
    void newPasswordIsFatal();
    void flashing();
    void otherNick_data();
    void otherNick();
    void heldChannel();
    void registration_data();
    void registration();
    void registrationNeedsConnection();
    void registrationCancelledBehindTheCommand();
    void pastedLines();
    void enterOnButtons();
};

void tst_NickForms::password_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("button") << false;
    QTest::newRow("Enter") << true;
}

void tst_NickForms::password()
{
    QFETCH(bool, byKey);
    Scene scene;
    scene.forms.showPassword();
    QVERIFY(!scene.host.channelEnabled);
    QCOMPARE(shown<frmPassword>()->findChild<QLabel*>(u"lblusr"_s)->text(), u"NickName : me"_s);
    const auto accept = [&] {
        if (byKey)
            QTest::keyClick(field<frmPassword>(u"Text1"_s), Qt::Key_Return);
        else
            press<frmPassword>(u"cmdOk"_s);
    };
    accept();
    QVERIFY(shown<frmPassword>()); // nothing typed
    type(field<frmPassword>(u"Text1"_s), u"open sesame"_s);
    accept();
    QCOMPARE(scene.desk.take(),
             RecordingDesk::expected("<< IDENTIFY open sesame\nlstNicks.Enabled=true"));
    QVERIFY(!shown<frmPassword>());
    QVERIFY(scene.host.channelEnabled);
}

void tst_NickForms::newNickInsteadOfPassword()
{
    Scene scene;
    scene.forms.showPassword();
    press<frmPassword>(u"cmdChange"_s);
    QVERIFY(!shown<frmPassword>());
    QVERIFY(shown<usenick>());
    QVERIFY(!scene.host.channelEnabled); // one of the forms still stands
    type(field<usenick>(u"Text1"_s), u"carol"_s);
    press<usenick>(u"cmdOk"_s);
    QVERIFY(scene.host.channelEnabled);
}

void tst_NickForms::newPasswordIsFatal()
{
    Scene scene;
    scene.desk.sock.setState(Winsock::Connecting);
    scene.forms.mnu_File_changepass_Click();
    QVERIFY(!shown<frmPassword>());
    scene.desk.sock.setState(Winsock::Connected);
    scene.forms.mnu_File_changepass_Click();
    const auto* form = shown<frmPassword>();
    QCOMPARE(form->windowTitle(), u"Change Your Password For me"_s);
    QCOMPARE(form->findChild<QGroupBox*>()->title(), u"This service is for registered users"_s);
    QCOMPARE(form->findChild<QLabel*>(u"Label1"_s)->text(),
             u"Enter your New Password for me .Otherwise, Click on New Nick and Change your "
             u"nickname."_s);
    press<frmPassword>(u"cmdOk"_s);
    QCOMPARE(scene.desk.take(), QStringList());
    type(field<frmPassword>(u"Text1"_s), u"secret"_s);
    press<frmPassword>(u"cmdOk"_s);
    QCOMPARE(scene.desk.take(), QStringList{u"FATAL Run-time error '424':\n\nObject required"_s});
}

void tst_NickForms::flashing()
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

void tst_NickForms::otherNick_data()
{
    QTest::addColumn<bool>("refused"); // usenick, or frmchange
    QTest::addColumn<bool>("byKey");
    QTest::newRow("usenick, button") << true << false;
    QTest::newRow("usenick, Enter") << true << true;
    QTest::newRow("frmchange, button") << false << false;
    QTest::newRow("frmchange, Enter") << false << true;
}

void tst_NickForms::otherNick()
{
    QFETCH(bool, refused);
    QFETCH(bool, byKey);
    Scene scene;
    scene.desk.sock.setState(Winsock::Connecting); // need not stand
    const auto form = [&]() -> Form* {
        return refused ? static_cast<Form*>(shown<usenick>()) : shown<frmchange>();
    };
    if (refused)
        scene.forms.showUseNick();
    else
        scene.forms.mnu_File_changenick_Click();
    QVERIFY(form());
    QVERIFY(!scene.host.channelEnabled);
    auto* Text1 = form()->findChild<QLineEdit*>(u"Text1"_s);
    auto* button = form()->findChild<QWidget*>(refused ? u"cmdOk"_s : u"cmdOK"_s);
    const auto accept = [&] {
        if (byKey)
            QTest::keyClick(Text1, Qt::Key_Return);
        else
            QTest::mouseClick(button, Qt::LeftButton);
    };
    accept();
    QVERIFY(form());
    const QString complaint = u"box|Type A Nick Name|No NickName Given"_s;
    QCOMPARE(scene.desk.take(), refused ? QStringList() : QStringList{complaint});
    type(Text1, u"carol"_s);
    accept();
    QVERIFY(!form());
    QCOMPARE(scene.desk.take(), QStringList{u"<< NICK carol"_s});
    QCOMPARE(scene.desk.variables.MyNick, u"carol"_s);
    QCOMPARE(scene.desk.login.Text1, u"carol"_s);
    QVERIFY(scene.host.channelEnabled);
}

void tst_NickForms::heldChannel()
{
    Scene scene;
    scene.forms.mnu_File_changenick_Click();
    scene.forms.showUseNick();
    shown<usenick>()->close();
    QVERIFY(!scene.host.channelEnabled);
    shown<frmchange>()->close();
    QVERIFY(scene.host.channelEnabled);
    QVERIFY(!shown<frmchange>());
    scene.forms.mnu_register_nickname_Click();
    QVERIFY(scene.host.channelEnabled); // this one holds nothing
}

void tst_NickForms::registration_data()
{
    QTest::addColumn<QString>("password");
    QTest::addColumn<QString>("address");
    QTest::addColumn<QStringList>("log");
    const QString noPassword = u"box|Enter Your NickName Password|No Password"_s;
    const QString noAddress = u"box|Enter Your E-mail Address|No E-mail Address"_s;
    QTest::newRow("complete") << u"pw"_s << u"me@example.org"_s
                              << QStringList{u"<< PRIVMSG nickserv :register pw me@example.org "_s};
    QTest::newRow("no password") << QString() << u"me@example.org"_s << QStringList{noPassword};
    QTest::newRow("no address") << u"pw"_s << QString() << QStringList{noAddress};
    QTest::newRow("nothing") << QString() << QString() << QStringList{noPassword, noAddress};
}

void tst_NickForms::registration()
{
    QFETCH(QString, password);
    QFETCH(QString, address);
    Scene scene;
    scene.forms.mnu_register_nickname_Click();
    QCOMPARE(field<frmregister>(u"Text1"_s)->text(), u"me"_s);
    QVERIFY(!field<frmregister>(u"Text4"_s)->isVisible());
    type(field<frmregister>(u"Text1"_s), u"somebody"_s);
    type(field<frmregister>(u"Text2"_s), password);
    type(field<frmregister>(u"Text3"_s), address);
    auto* Text1 = field<frmregister>(u"Text1"_s);
    press<frmregister>(u"cmdRegister"_s);
    QTEST(scene.desk.take(), "log");
    QCOMPARE(Text1->text(), u"me"_s);
    QVERIFY(!shown<frmregister>());
}

void tst_NickForms::registrationNeedsConnection()
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
    press<frmregister>(u"cmdRegister"_s);
    QCOMPARE(scene.desk.take(),
             QStringList{u"box|Not Connected|Check Your Internet Connection.You are not "
                         u"connected to register your nickname."_s});
    QVERIFY(shown<frmregister>());
    press<frmregister>(u"cmdCancel"_s);
    QVERIFY(!shown<frmregister>());
    QCOMPARE(scene.desk.take(), QStringList());
}

void tst_NickForms::registrationCancelledBehindTheCommand()
{
    Scene scene;
    scene.forms.mnu_register_nickname_Click();
    QPointer<QWidget> form = shown<frmregister>();
    type(field<frmregister>(u"Text2"_s), u"pw"_s);
    // A box lets other events run: the form goes, and is gone for good, before its handler ends.
    scene.desk.dialogs.whileOpen = [&] {
        scene.forms.unloadRegister();
        QCoreApplication::sendPostedEvents(form, QEvent::DeferredDelete);
    };
    QTimer::singleShot(0, form, [] { press<frmregister>(u"cmdRegister"_s); });
    QTRY_VERIFY(!form);
    QCOMPARE(scene.desk.take().size(), 1);
}

void tst_NickForms::pastedLines()
{
    Scene scene;
    scene.forms.showUseNick();
    field<usenick>(u"Text1"_s)->setText(u"carol\r\nQUIT :x"_s);
    press<usenick>(u"cmdOk"_s);
    QCOMPARE(scene.desk.take(), QStringList{u"<< NICK carol"_s});
}

void tst_NickForms::enterOnButtons()
{
    Scene scene;
    scene.forms.mnu_register_nickname_Click();
    auto* form = shown<frmregister>();
    QVERIFY(QTest::qWaitForWindowActive(form));
    QStringList order;
    for (int i = 0; i < 5; ++i) {
        order += form->focusWidget()->objectName();
        QTest::keyClick(form->focusWidget(), Qt::Key_Tab);
    }
    QCOMPARE(order,
             (QStringList{u"Text2"_s, u"Text3"_s, u"cmdRegister"_s, u"cmdCancel"_s, u"Text1"_s}));
    form->findChild<QWidget*>(u"cmdCancel"_s)->setFocus();
    QTest::keyClick(form->focusWidget(), Qt::Key_Return);
    QVERIFY(!shown<frmregister>());
}

QTEST_MAIN(tst_NickForms)
#include "tst_nickforms.moc"
