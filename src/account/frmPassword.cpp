#include "account/frmPassword.h"

#include "common/OneLine.h"
#include "common/RunTimeError.h"
#include "common/SessionVariables.h"
#include "common/TextHelpers.h"
#include "controls/FormControls.h"
#include "controls/ListBox.h"
#include "controls/xpButton.h"
#include "platform/Handlers.h"
#include "platform/PlainText.h"
#include "room/Room.h"
#include "session/Ports.h"
#include "wire/LineSink.h"

#include <QGroupBox>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int flashMilliseconds = 1200;
constexpr int textWidth = 340;

} // namespace

frmPassword::frmPassword(const NickFormDesk& desk, ChannelHold& channel, NickPrompts& prompts)
    : m_desk(desk)
    , m_channel(channel)
    , m_prompts(prompts)
    , Frame1(new QGroupBox(u"Password Required :"_s))
    , Label1(makeLabel(u"Label1"_s,
                       u"This nickname is registered. If this nickname is yours, type your "
                       u"nickname password else type a New Nick."_s))
    , lblusr(makeLabel(u"lblusr"_s, u"NickName :"_s))
{
    setWindowTitle(u"Enter Your NickName Password"_s);
    Frame1->setObjectName(u"Frame1"_s);
    Label1->setWordWrap(true);
    Label1->setFixedWidth(textWidth);
    auto* lblpwd = makeLabel(u"lblpwd"_s, u"Password :"_s);
    Text1 = makeField(u"Text1"_s, lblpwd, QLineEdit::Password);
    auto* cmdOk = makeButton(u"cmdOk"_s, u"OK"_s);
    auto* cmdChange = makeButton(u"cmdChange"_s, u"New Nick"_s);

    auto* passwordRow = new QHBoxLayout;
    passwordRow->addWidget(lblpwd);
    passwordRow->addWidget(Text1, 1);
    auto* frame = new QVBoxLayout(Frame1);
    frame->addWidget(Label1);
    frame->addWidget(lblusr);
    frame->addLayout(passwordRow);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(Frame1);
    layout->addLayout(makeButtonRow({cmdOk, cmdChange}));
    setFormLayout(layout);

    flsh.setObjectName(u"flsh"_s);
    flsh.setInterval(flashMilliseconds);
    new ButtonKeys(this);
    desk.handlers.connect(cmdOk, &xpButton::Click, this, [this] { cmdOk_Click(); });
    desk.handlers.connect(Text1, &QLineEdit::returnPressed, this, [this] { cmdOk_Click(); });
    desk.handlers.connect(cmdChange, &xpButton::Click, this, [this] { cmdChange_Click(); });
    desk.handlers.connect(&flsh, &QTimer::timeout, this,
                          [this] { m_desk.host.FlashWindow(*this); });
}

void frmPassword::Form_Load()
{
    m_channel.take();
    lblusr->setText("NickName : "_L1 + beforeNul(m_desk.variables.MyNick));
    Text1->setFocus();
    flsh.start();
}

void frmPassword::Form_Unload()
{
    flsh.stop();
    m_channel.release();
    m_desk.room.form.lstNicks().setEnabled(true);
}

void frmPassword::setChangeMode()
{
    m_caption = changeCaption();
    setPlainTitle(*this, m_caption);
    Frame1->setTitle(u"This service is for registered users"_s);
    Label1->setText("Enter your New Password for "_L1 % beforeNul(m_desk.variables.MyNick) %
                    " .Otherwise, Click on New Nick and Change your nickname."_L1);
}

QString frmPassword::changeCaption() const
{
    return "Change Your Password For "_L1 + beforeNul(m_desk.variables.MyNick);
}

void frmPassword::cmdOk_Click()
{
    const QString password = oneLine(Text1->text());
    if (password.isEmpty())
        return;
    // The caption is the mode. The command for a new password would have to be put together in a
    // line holder, which this form has not got. So the program ends here, and nothing of what was
    // typed goes out.
    if (m_caption == changeCaption())
        throw RunTimeError(RunTimeError::Number::ObjectRequired);
    m_desk.server.SendData("IDENTIFY "_L1 + password);
    Unload();
}

void frmPassword::cmdChange_Click()
{
    m_prompts.showUseNick();
    Unload();
}
