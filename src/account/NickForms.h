#pragma once

#include "account/NickFormDesk.h"
#include "account/frmPassword.h"
#include "account/frmchange.h"
#include "account/frmregister.h"
#include "account/usenick.h"
#include "platform/Form.h"
#include "session/Ports.h"

// The four forms around the own nick and the menu entries that show them.
class NickForms final : public NickPrompts
{
public:
    explicit NickForms(const NickFormDesk& desk);

    void showPassword() override;
    void unloadPassword() override;
    void showUseNick() override;

    void mnu_File_changenick_Click();
    void mnu_File_changepass_Click();
    void mnu_register_nickname_Click();

    // At the end of the program.
    void unloadRegister() { m_register.Unload(); }
    void unloadChange() { m_change.Unload(); }
    void unloadUseNick() { m_useNick.Unload(); }

private:
    bool isConnected() const;

    NickFormDesk m_desk;
    ChannelHold m_channel;
    FormSlot<frmPassword> m_password;
    FormSlot<frmregister> m_register;
    FormSlot<frmchange> m_change;
    FormSlot<usenick> m_useNick;
};
