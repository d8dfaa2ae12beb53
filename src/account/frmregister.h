#pragma once

#include "account/NickFormDesk.h"
#include "platform/Form.h"

class QLineEdit;

// Registers the own nick with the nickname service. The main window stays usable beside it.
class frmregister final : public Form
{
    Q_OBJECT
public:
    explicit frmregister(const NickFormDesk& desk);

    void Form_Load() override;

private:
    void cmdRegister_Click();

    const NickFormDesk& m_desk;
    QLineEdit* Text1; // nick
    QLineEdit* Text2; // password
    QLineEdit* Text3; // e-mail address
    QLineEdit* Text4; // never shown: the command while it is put together
};
