#include "contacts/IgnoreRows.h"

#include "controls/ListBox.h"
#include "talk/Blocking.h"

QString IgnoreRows::refusal(const QString& nick) const
{
    if (const QString text = blockRefusal(nick, m_variables, m_room); !text.isEmpty())
        return text;
    // Not a look for the nick: any selected row refuses all of them, and without a selection the
    // same nick can be added twice.
    if (!m_list1.Text().isEmpty())
        return sameNickRefusal;
    return {};
}

void IgnoreRows::add(const QString& nick) const
{
    m_list1.AddItem(blockedRow(nick));
}

void IgnoreRows::removeSelected() const
{
    if (!m_list1.Text().isEmpty())
        m_list1.RemoveItem(m_list1.ListIndex());
}
