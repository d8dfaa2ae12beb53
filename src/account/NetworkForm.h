#pragma once

#include "account/NetworkChoice.h"
#include "platform/Form.h"
#include "wire/ConnectionTrial.h"

class Handlers;
class QComboBox;
class QLabel;
class QLineEdit;
class xpButton;

// Where to chat: the server's address, the room and the letters of the lines. Explains a wrong
// address while it is typed and tries the connection when it is asked to.
class NetworkForm final : public Form
{
    Q_OBJECT
public:
    struct Parts
    {
        const Handlers& handlers;
        const Settings& settings;
        const UserStore& store;
        std::function<void()> chosen; // the settings hold it
    };

    explicit NetworkForm(const Parts& parts);

    void Form_Load() override;

private:
    void buildFields();
    void layOut();
    void connectEvents();

    NetworkChoice choice() const;
    void explain();
    void cmdTry_Click();
    void cmdOK_Click();
    void tell(const ConnectionTrial::Finding& finding);
    void showTrial(bool running);

    Parts m_parts;
    ConnectionTrial m_trial{this};
    QStringList m_findings;

    QComboBox* cmbServer = nullptr;
    QLabel* lblServer = nullptr; // what the address means, or what is wrong with it
    QLabel* lblOverruled = nullptr;
    QLineEdit* txtRoom = nullptr;
    QLabel* lblRoom = nullptr;
    QComboBox* cmbLetters = nullptr;
    QLabel* lblTrial = nullptr;
    xpButton* cmdTry = nullptr;
    xpButton* cmdOK = nullptr;
    xpButton* cmdCancel = nullptr;
};
