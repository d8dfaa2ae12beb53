#pragma once

#include "account/NickFormDesk.h"
#include "platform/Form.h"

class QLineEdit;

// Takes another nick, connected or not. The nick counts as changed before the server answers.
class frmchange final : public Form
{
    Q_OBJECT
public:
    frmchange(const NickFormDesk& desk, ChannelHold& channel);

    void Form_Load() override;
    void Form_Unload() override;

private:
    void cmdOK_Click();

    const NickFormDesk& m_desk;
    ChannelHold& m_channel;
    QLineEdit* Text1;
};
