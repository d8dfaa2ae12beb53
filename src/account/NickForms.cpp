#include "account/NickForms.h"

#include "common/SessionVariables.h"
#include "platform/Dialogs.h"
#include "wire/LineSink.h"
#include "wire/Winsock.h"

#include <QApplication>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace {

// The server brings such a form up whenever it likes. While a box is open the toolkit lets the user
// reach nothing but the box and what belongs to it.
void showBesideBox(Form& form)
{
    form.Show();
    if (const QWidget* box = QApplication::activeModalWidget())
        form.windowHandle()->setTransientParent(box->windowHandle());
}

} // namespace

NickForms::NickForms(const NickFormDesk& desk)
    : m_desk(desk)
    , m_channel(desk.host)
    , m_password([this] { return std::make_unique<frmPassword>(m_desk, m_channel, *this); })
    , m_register([this] { return std::make_unique<frmregister>(m_desk); })
    , m_change([this] { return std::make_unique<frmchange>(m_desk, m_channel); })
    , m_useNick([this] { return std::make_unique<usenick>(m_desk, m_channel); })
{
}

void NickForms::showPassword()
{
    showBesideBox(m_password());
}

void NickForms::unloadPassword()
{
    m_password.Unload();
}

void NickForms::showUseNick()
{
    showBesideBox(m_useNick());
}

void NickForms::mnu_File_changenick_Click()
{
    m_change->Show();
}

void NickForms::mnu_File_changepass_Click()
{
    if (!isConnected())
        return;
    m_password->setChangeMode();
    m_password->Show();
}

void NickForms::mnu_register_nickname_Click()
{
    if (isConnected())
        m_register->Show();
    else
        m_desk.dialogs.MsgBox(u"Check Your Internet Connection. You are not connected to register "
                              u"your nickname."_s,
                              u"Not Connected"_s);
}

bool NickForms::isConnected() const
{
    return m_desk.server.sockState() == Winsock::Connected;
}
