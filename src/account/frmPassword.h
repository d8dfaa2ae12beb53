#pragma once

#include "account/NickFormDesk.h"
#include "platform/Form.h"

#include <QTimer>

class NickPrompts;
class QGroupBox;
class QLabel;
class QLineEdit;

// Asks for the password of the own nick when the nickname service wants to see it. Its caption
// can put it into another mode, in which it asks for a new password.
class frmPassword final : public Form
{
    Q_OBJECT
public:
    frmPassword(const NickFormDesk& desk, ChannelHold& channel, NickPrompts& prompts);

    void Form_Load() override;
    void Form_Unload() override;

    void setChangeMode();

private:
    QString changeCaption() const;
    void cmdOk_Click();
    void cmdChange_Click();

    const NickFormDesk& m_desk;
    ChannelHold& m_channel;
    NickPrompts& m_prompts;
    QGroupBox* Frame1;
    QLabel* Label1;
    QLabel* lblusr;
    QLineEdit* Text1;
    QString m_caption; // in the other mode
    QTimer flsh{this};
};
