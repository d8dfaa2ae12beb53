#pragma once

#include "ChatRoom.h"
#include "Surroundings.h"
#include "account/Login.h"
#include "account/LoginDesk.h"
#include "account/NetworkForm.h"
#include "account/frmSplash.h"
#include "common/SessionVariables.h"
#include "desktop/About.h"
#include "desktop/Author.h"
#include "desktop/FontOption.h"
#include "desktop/TrayMenu.h"
#include "desktop/clsSysTray.h"
#include "desktop/frmPopup.h"
#include "platform/Form.h"
#include "platform/Handlers.h"
#include "platform/WatchedDialogs.h"
#include "session/DebugWin.h"
#include "settings/PreviousInstance.h"
#include "settings/RememberedPassword.h"
#include "settings/RunKey.h"
#include "settings/Settings.h"
#include "settings/UserStore.h"

#include <memory>

// One running program: owns every window and every logic object and wires them. Several can live
// in one process, each in surroundings of its own.
class Messenger final : public QObject,
                        private LoginDesk,
                        private Program,
                        private TrafficLog,
                        private SmallForms
{
    Q_OBJECT
public:
    explicit Messenger(const Surroundings& surroundings);
    ~Messenger() override;

    // Shows the splash; the sign-in form follows by itself.
    void start();

    Login& login() { return m_login; }
    // Loads the main window at the first touch, which raises what its settings raise.
    ChatRoom& chatRoom();
    bool hasChatRoom() const { return m_chatRoom != nullptr; }

protected:
    // The desktop ends its session. No window that only hides at a close may stand in the way.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void showLogin();
    void showTrayMenu();
    void exit();
    std::shared_ptr<void> whileBoxIsOpen();
    void watchServer(const Winsock& sock);
    void takeNetwork();
    QString server() const;
    void fail(const QString& message);

    // LoginDesk
    void stopRetrying() override { chatRoom().session.connection.stopRetrying(); }
    void loadChannel() override { chatRoom(); }
    void mnu_File_Connect_Click() override
    {
        chatRoom().session.connection.mnu_File_Connect_Click();
    }
    void mnu_File_Disconnect_Click() override
    {
        chatRoom().session.connection.mnu_File_Disconnect_Click();
    }
    void showChatRoom() override { chatRoom().main.window.Show(); }
    void createTrayIcon() override;
    bool canHideSignIn() const override;
    void showPopup() override { m_popup.Show(); }
    void showAbout() override { m_about->Show(); }
    void showAuthor() override { m_author->Show(); }
    void showFontOption() override { m_fontOption->Show(); }
    void openFeedbackPage() override;
    void chooseNetwork() override { m_networkForm->Show(); }
    bool hasPreviousInstance() const override { return m_previousInstance.found(); }

    // Program
    void unloadSmallForms() override;
    void End() override;

    // TrafficLog
    bool Visible() const override { return m_debugWin.isVisible(); }
    void received(const QString& data) override { m_debugWin->received(data); }
    void sent(const QString& line) override { m_debugWin->sent(line); }

    const Surroundings m_surroundings;
    WatchedDialogs m_dialogs;
    Handlers m_handlers;
    Notices m_notices;
    Settings m_settings;
    UserStore m_store;
    RememberedPassword m_password;
    RunKey m_runKey;
    PreviousInstance m_previousInstance;
    SessionVariables m_variables;

    FormSlot<frmSplash> m_splash;
    FormSlot<DebugWin> m_debugWin;
    FormSlot<frmPopup> m_popupForm;
    PopupOnDemand m_popup;
    FormSlot<FontOption> m_fontOption;
    FormSlot<About> m_about;
    FormSlot<Author> m_author;
    FormSlot<NetworkForm> m_networkForm;
    Login m_login;
    WidgetSourceForm m_loginAsSource;
    clsSysTray gSysTray;
    TrayMenu m_trayMenu;
    std::unique_ptr<ChatRoom> m_chatRoom;
};
