#include "talk/QueryTable.h"

#include "common/Conversions.h"
#include "common/TextHelpers.h"

#include <algorithm>
#include <utility>

QueryTable::QueryTable(PrivateWindowFactory& windows, Switches switches, BlockedRows ignoreRows)
    : m_windows(windows)
    , m_switches(switches)
    , m_ignoreRows(std::move(ignoreRows))
{
}

int QueryTable::FindQuery(const QString& nick) const
{
    const QString wanted = nick.toLower();
    for (int slot = 1; slot <= m_queryCount; ++slot) {
        if (Queries(slot).QueryNick.toLower() == wanted)
            return slot;
    }
    return -1;
}

bool QueryTable::QueryVisible(const QString& nick)
{
    checkIgnored(nick);
    return FindQuery(nick) != -1;
}

int QueryTable::OpenQuery(const QString& nick, const QString& host)
{
    if (m_switches.mnu_pm_no.Checked() && m_switches.mnu_blocked.Checked())
        return 0;
    if (m_switches.mnu_pm_yes.Checked())
        return 0;
    if (const int slot = FindQuery(nick); slot != -1) {
        Queries(slot).SetFocus();
        return 0;
    }
    checkIgnored(nick);
    int slot = 0;
    PrivateWindow& window = freeWindow(slot);
    window.setPeer(nick);
    window.setPeerHost(TextAfter(host, u'!'));
    window.setVisible(true);
    window.setTag(QString::number(slot));
    return slot;
}

void QueryTable::talkTo(const QString& nick)
{
    if (const int slot = OpenQuery(nick, {}); slot != 0)
        Queries(slot).SetFocus();
}

bool QueryTable::isIgnored(const QString& nick) const
{
    return holdsRow(m_ignoreRows(), blockedRow(nick));
}

PrivateWindow& QueryTable::Queries(int slot) const
{
    PrivateWindow* window = m_queries(slot);
    if (!window)
        throw RunTimeError(RunTimeError::Number::ObjectVariableNotSet);
    return *window;
}

PrivateWindow* QueryTable::windowOf(const QString& nick) const
{
    const int slot = FindQuery(nick);
    return slot == -1 ? nullptr : &Queries(slot);
}

void QueryTable::unloadAll()
{
    for (int slot = 1; slot <= lastSlot(); ++slot)
        Queries(slot).Unload();
    m_queryCount = 0;
}

void QueryTable::unloadOpen()
{
    for (int slot = 1; slot <= lastSlot(); ++slot) {
        if (!Queries(slot).QueryNick.isEmpty())
            Queries(slot).Unload();
    }
}

// After a conversation too many the count stands past the last slot. That must keep neither a new
// connection nor the end of the program from clearing the table.
int QueryTable::lastSlot() const
{
    return std::min<int>(m_queryCount, decltype(m_queries)::upper);
}

void QueryTable::checkIgnored(const QString& nick)
{
    const QString blocked = blockedRow(nick).toLower();
    const ListBox& rows = m_ignoreRows();
    for (int row = 0; row <= rows.ListCount(); ++row) {
        if (rows.List(row).toLower() != blocked)
            continue;
        // Meant as a slot, but a nick is hardly ever a number: this fails, and that is the block.
        Queries(wholeInt16(nick) - 1).Unload();
    }
}

PrivateWindow& QueryTable::freeWindow(int& slot)
{
    for (slot = 1; slot <= m_queryCount; ++slot) {
        if (Queries(slot).QueryNick.isEmpty())
            return Queries(slot);
    }
    slot = ++m_queryCount;
    PrivateWindow*& entry = m_queries(slot);
    entry = &m_windows.create();
    return *entry;
}
