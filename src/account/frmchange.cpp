#include "account/frmchange.h"

#include "common/OneLine.h"
#include "controls/FormControls.h"
#include "controls/xpButton.h"
#include "platform/Dialogs.h"
#include "platform/Handlers.h"

#include <QVBoxLayout>

using namespace Qt::StringLiterals;

frmchange::frmchange(const NickFormDesk& desk, ChannelHold& channel)
    : m_desk(desk)
    , m_channel(channel)
{
    setWindowTitle(u"Change NickName"_s);
    auto* Label1 = makeLabel(u"Label1"_s, u"NickName"_s);
    auto* Label2 = makeLabel(u"Label2"_s, u"Enter A New NickName"_s);
    Text1 = makeField(u"Text1"_s, Label1);
    auto* cmdOK = makeButton(u"cmdOK"_s, u"OK"_s);

    auto* row = new QHBoxLayout;
    row->addWidget(Label1);
    row->addWidget(Text1, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(Label2);
    layout->addLayout(row);
    layout->addLayout(makeButtonRow({cmdOK}));
    setFormLayout(layout);

    new ButtonKeys(this);
    desk.handlers.connect(cmdOK, &xpButton::Click, this, [this] { cmdOK_Click(); });
    desk.handlers.connect(Text1, &QLineEdit::returnPressed, this, [this] { cmdOK_Click(); });
}

void frmchange::Form_Load()
{
    m_channel.take();
    Text1->setFocus();
}

void frmchange::Form_Unload()
{
    m_channel.release();
}

void frmchange::cmdOK_Click()
{
    const QString nick = oneLine(Text1->text());
    if (nick.isEmpty()) {
        m_desk.dialogs.MsgBox(u"No NickName Given"_s, u"Type A Nick Name"_s);
        return;
    }
    takeNick(m_desk, nick);
    Unload();
}
