#pragma once

#include "ChatRoom.h"
#include "PendingWindows.h"
#include "Surroundings.h"
#include "account/Login.h"
#include "account/LoginDesk.h"
#include "account/frmSplash.h"
#include "common/SessionVariables.h"
#include "desktop/Settings.h"
#include "platform/Form.h"
#include "platform/Handlers.h"
#include "platform/PreviousInstance.h"
#include "platform/RunKey.h"
#include "platform/UserStore.h"
#include "session/DebugWin.h"

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

private:
    void showLogin();
    void wireChatRoom();
    void fail(const QString& message);

    // LoginDesk
    void stopRetrying() override { chatRoom().connection.stopRetrying(); }
    void loadChannel() override { chatRoom(); }
    void mnu_File_Connect_Click() override { chatRoom().connection.mnu_File_Connect_Click(); }
    void mnu_File_Disconnect_Click() override { chatRoom().connection.mnu_File_Disconnect_Click(); }
    void showChatRoom() override { chatRoom().window.Show(); }
    void createTrayIcon() override;
    void showPopup() override;
    void showAbout() override;
    void showAuthor() override;
    void showFontOption() override;
    void openFeedbackPage() override;
    bool hasPreviousInstance() const override { return m_previousInstance.found(); }

    // Program
    void unloadSmallForms() override;
    void End() override;

    // TrafficLog
    bool Visible() const override { return m_debugWin.isVisible(); }
    void received(const QString& data) override { m_debugWin->received(data); }
    void sent(const QString& line) override { m_debugWin->sent(line); }

    const Surroundings m_surroundings;
    Handlers m_handlers;
    Settings m_settings;
    UserStore m_store;
    RunKey m_runKey;
    PreviousInstance m_previousInstance;
    SessionVariables m_variables;

    FormSlot<frmSplash> m_splash;
    FormSlot<DebugWin> m_debugWin;
    PendingWindows m_pending;
    Login m_login;
    std::unique_ptr<ChatRoom> m_chatRoom;
};
