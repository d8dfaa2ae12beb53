#include "account/usenick.h"

#include "common/OneLine.h"
#include "controls/FormControls.h"
#include "controls/xpButton.h"
#include "platform/Handlers.h"

#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int widthOfTitle = 340;

} // namespace

usenick::usenick(const NickFormDesk& desk, ChannelHold& channel)
    : m_desk(desk)
    , m_channel(channel)
{
    setWindowTitle(u"NickName Already In Use Or Invalid"_s);
    auto* Label1 = makeLabel(u"Label1"_s, u"Please Choose Another NickName"_s);
    Text1 = makeField(u"Text1"_s, Label1);
    auto* cmdOk = makeButton(u"cmdOk"_s, u"OK"_s);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(Label1);
    layout->addWidget(Text1);
    layout->addLayout(makeButtonRow({cmdOk}));
    Text1->setMinimumWidth(widthOfTitle); // the title is longer than anything in the window
    setFormLayout(layout);

    new ButtonKeys(this);
    desk.handlers.connect(cmdOk, &xpButton::Click, this, [this] { cmdOk_Click(); });
    desk.handlers.connect(Text1, &QLineEdit::returnPressed, this, [this] { cmdOk_Click(); });
}

void usenick::Form_Load()
{
    m_channel.take();
    Text1->setFocus();
}

void usenick::Form_Unload()
{
    m_channel.release();
}

void usenick::cmdOk_Click()
{
    const QString nick = oneLine(Text1->text());
    if (nick.isEmpty())
        return;
    takeNick(m_desk, nick);
    Unload();
}
