#pragma once

#include "account/NickFormDesk.h"
#include "platform/Form.h"

class QLineEdit;

// Asks for another nick when the server refuses the one it was offered.
class usenick final : public Form
{
    Q_OBJECT
public:
    usenick(const NickFormDesk& desk, ChannelHold& channel);

    void Form_Load() override;
    void Form_Unload() override;

private:
    void cmdOk_Click();

    const NickFormDesk& m_desk;
    ChannelHold& m_channel;
    QLineEdit* Text1;
};
