#include "account/frmregister.h"

#include "commands/CommandProcessor.h"
#include "common/OneLine.h"
#include "common/SessionVariables.h"
#include "common/TextHelpers.h"
#include "controls/FormControls.h"
#include "controls/xpButton.h"
#include "platform/Dialogs.h"
#include "platform/Handlers.h"
#include "room/Room.h"
#include "wire/LineSink.h"
#include "wire/Winsock.h"

#include <QGridLayout>

using namespace Qt::StringLiterals;

frmregister::frmregister(const NickFormDesk& desk)
    : m_desk(desk)
    , Text4(new QLineEdit(this))
{
    setWindowTitle(u"NickName Registration"_s);
    auto* Label1 = makeLabel(u"Label1"_s, u"Fill The Requirements Below :"_s);
    auto* Label2 = makeLabel(u"Label2"_s, u"NickName :"_s);
    auto* Label3 = makeLabel(u"Label3"_s, u"Password  :"_s);
    auto* Label4 = makeLabel(u"Label4"_s, u"E-mail Address  :"_s);
    Text1 = makeField(u"Text1"_s, Label2);
    Text2 = makeField(u"Text2"_s, Label3, QLineEdit::Password);
    Text3 = makeField(u"Text3"_s, Label4);
    Text4->setObjectName(u"Text4"_s);
    Text4->hide();
    auto* cmdRegister = makeButton(u"cmdRegister"_s, u"Register"_s);
    auto* cmdCancel = makeButton(u"cmdCancel"_s, u"Cancel"_s);

    auto* layout = new QGridLayout(this);
    layout->addWidget(Label1, 0, 0, 1, 2);
    layout->addWidget(Label2, 1, 0);
    layout->addWidget(Text1, 1, 1);
    layout->addWidget(Label3, 2, 0);
    layout->addWidget(Text2, 2, 1);
    layout->addWidget(Label4, 3, 0);
    layout->addWidget(Text3, 3, 1);
    layout->addLayout(makeButtonRow({cmdRegister, cmdCancel}), 4, 0, 1, 2);
    setFormLayout(layout);

    new ButtonKeys(this);
    desk.handlers.connect(cmdRegister, &xpButton::Click, this, [this] { cmdRegister_Click(); });
    desk.handlers.connect(cmdCancel, &xpButton::Click, this, [this] { Unload(); });
}

void frmregister::Form_Load()
{
    Text1->setText(beforeNul(m_desk.variables.MyNick));
    Text2->setFocus();
}

void frmregister::cmdRegister_Click()
{
    const NickFormDesk& desk = m_desk;
    if (desk.server.sockState() != Winsock::Connected) {
        desk.dialogs.MsgBox(u"Check Your Internet Connection.You are not connected to register "
                            u"your nickname."_s,
                            u"Not Connected"_s);
        return;
    }
    Text1->setText(beforeNul(desk.variables.MyNick)); // no other nick can be registered
    const QString password = oneLine(Text2->text());
    const QString address = oneLine(Text3->text());
    if (password.isEmpty())
        desk.dialogs.MsgBox(u"No Password"_s, u"Enter Your NickName Password"_s);
    if (address.isEmpty())
        desk.dialogs.MsgBox(u"No E-mail Address"_s, u"Enter Your E-mail Address"_s);
    if (!password.isEmpty() && !address.isEmpty()) {
        Text4->setText("/msg nickserv register "_L1 % password % u' ' % address % u' ');
        desk.server.SendData(
            desk.commands.ProcessInput(desk.room.ChannelName, CutLeft(Text4->text(), 1)));
    }
    // Closes even if something was left out.
    for (QLineEdit* field : {Text1, Text2, Text3})
        field->setEnabled(false);
    Unload();
}
