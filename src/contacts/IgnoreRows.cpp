#include "contacts/IgnoreRows.h"

#include "common/ControlCharacters.h"
#include "common/SessionVariables.h"
#include "controls/ListBox.h"
#include "platform/Dialogs.h"
#include "room/Room.h"
#include "talk/Blocking.h"
#include "wire/LineSink.h"

using namespace Qt::StringLiterals;

void IgnoreRows::cmdAdd_Click() const
{
    // Without a selection in the room there is no question, whatever the answer would be.
    if (m_parts.room.form.lstNicks().ListIndex() == -1)
        return;
    const QString nick =
        m_parts.dialogs.InputBox(u"Add a nickname to IgnoreList"_s, u"IgnoreList"_s);
    if (nick.isEmpty())
        return;
    if (const QString text = refusal(nick); !text.isEmpty()) {
        m_parts.dialogs.MsgBox(text, u"Block"_s);
        return;
    }
    m_parts.List1.AddItem(blockedRow(nick));
    // One word arrives: without a colon the others are parameters of their own.
    m_parts.server.SendData("PRIVMSG "_L1 % nick % u' ' % strColor % u'4' % strBold %
                            "You've been ignored by "_L1 % m_parts.variables.MyNick %
                            "[Tarnwyk Messenger Zephyr]"_L1);
}

QString IgnoreRows::refusal(const QString& nick) const
{
    if (const QString text = blockRefusal(nick, m_parts.variables, m_parts.room); !text.isEmpty())
        return text;
    // Not a look for the nick: any selected row refuses all of them, and without a selection the
    // same nick can be added twice.
    if (!m_parts.List1.Text().isEmpty())
        return sameNickRefusal;
    return {};
}

void IgnoreRows::cmdRemove_Click() const
{
    if (!m_parts.List1.Text().isEmpty())
        m_parts.List1.RemoveItem(m_parts.List1.ListIndex());
}
