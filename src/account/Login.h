#pragma once

#include "session/Ports.h"
#include "session/SessionReport.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QTimer>
#include <QWidget>

#include <optional>

class ActionEntry;
class Clock;
class Dialogs;
class NetworkLink;
class Handlers;
class LoginDesk;
class QMenuBar;
class RememberedPassword;
class RunKey;
class Settings;
class SvgPicture;
class UserStore;
class xpButton;

// Where a user signs in and out: two fields, four boxes, and a strip that moves as long as there
// is a connection. It lives as long as the program: closing it hides it.
class Login final : public QWidget, public SignInForm
{
    Q_OBJECT
public:
    struct Parts
    {
        LoginDesk& desk;
        const Settings& settings;
        const UserStore& store;
        RememberedPassword& password;
        RunKey& runKey;
        Dialogs& dialogs;
        const Clock& clock;
    };

    Login(const Parts& parts, const Handlers& handlers);

    void Form_Load();

    QString nickname() const override { return Text1->text(); }
    void setNickname(const QString& nick) override { Text1->setText(nick); }
    QString sessionPassword() const override { return Text3; }
    QString accountPassword() const override;
    void setEntriesLocked(bool locked) override;
    void setSignCaption(const QString& caption) override;
    void cmdSignIn_Click();
    void cmdSignout_Click() override;
    void Login_Log() override;
    void Login_UnLog() override;
    void Show() override;
    void Hide() override { hide(); }

    // What the form says of the session, counting down to the next attempt.
    void showReport(const SessionReport& report);
    // The server that the next attempt goes to, and whether the last one has failed.
    void showNetwork(const QString& server, bool failed);

    // Keeps the window at its signed-in size while the strip runs.
    void TimerGame();

protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void buildMenus();
    void buildControls();
    void connectEvents(const Handlers& handlers);

    void readSettings();
    void showSettings();
    void DoSignIn();
    void startSession();
    void refuseEmptyName();
    void keepPassword();
    void takePassword(const QString& password);
    void SaveConnect();
    bool registerAtStartUp();
    void setStripRunning(bool running);
    void setFormVisible(bool visible);

    void mnu_Sign_Click();
    void mnu_Close_Click();
    void Check3_Click();
    void check2_Click();
    void ChkStartUp_Click();
    void Timer1_Timer();
    void Timer2_Timer();
    void tellSession();

    Parts m_parts;

    QMenuBar* m_menuBar = nullptr;
    ActionEntry* mnu_Sign = nullptr;
    ActionEntry* mnu_chatroom = nullptr;
    ActionEntry* mnu_Close = nullptr;
    ActionEntry* mnu_Feedback = nullptr;
    ActionEntry* mnu_About = nullptr;
    ActionEntry* mnu_author = nullptr;

    QWidget* m_band = nullptr; // where the rest picture and the strip lie
    SvgPicture* Image1 = nullptr;
    SvgPicture* Picture1 = nullptr;
    SvgPicture* Picture2 = nullptr;
    SvgPicture* Image3 = nullptr;
    QLabel* Label3 = nullptr;
    QLabel* Label4 = nullptr;
    QLabel* Label5 = nullptr;
    QLabel* Label6 = nullptr;
    QLabel* Label7 = nullptr;
    QLabel* Label8 = nullptr;
    QLineEdit* Text1 = nullptr;
    QLineEdit* Text2 = nullptr;
    QString Text3; // a password that is used once and not stored
    QCheckBox* check1 = nullptr;
    QCheckBox* check2 = nullptr;
    QCheckBox* Check3 = nullptr;
    QCheckBox* ChkStartUp = nullptr;
    xpButton* cmdSignIn = nullptr;
    QLabel* lblSession = nullptr;
    std::optional<SessionReport> m_report; // none before the first attempt
    NetworkLink* lnkNetwork = nullptr;
    QTimer Timer1{this}; // the strip
    QTimer Timer2{this}; // the clock

    bool RememberNick = false;
    bool RememberPass = false;
    bool LoadAtStartUp = false;
    bool GuestMode = false;
};
