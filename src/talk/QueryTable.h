#pragma once

#include "common/BoundedArray.h"
#include "common/Int16.h"
#include "controls/ListBox.h"
#include "controls/MenuEntry.h"
#include "talk/Blocking.h"
#include "talk/PrivateWindow.h"

// The private conversations, at most 30. QueryCount only grows until the next connection: one too
// many raises SubscriptOutOfRange (9), and so does every search that gets past the last slot from
// then on.
class QueryTable final
{
public:
    // The entries of the main window that allow and refuse private talk. The names of the first
    // two cross over their captions: pmNo is "Yes".
    struct Switches
    {
        const MenuEntry& mnu_pm_no;
        const MenuEntry& mnu_pm_yes;
        const MenuEntry& mnu_blocked;
    };
    QueryTable(PrivateWindowFactory& windows, Switches switches, BlockedRows ignoreRows);

    // The slot of a nick, case ignored, or -1.
    int FindQuery(const QString& nick) const;
    // Whether there is a window for the nick. A blocked nick raises TypeMismatch (13), which is
    // what keeps its message out.
    bool QueryVisible(const QString& nick);
    // The slot of a new or reused window, 0 otherwise. Raises what QueryVisible raises.
    int OpenQuery(const QString& nick, const QString& host);
    // The same by the user's own wish: a new window comes to the front as an open one does.
    void talkTo(const QString& nick);

    bool isIgnored(const QString& nick) const;

    PrivateWindow& Queries(int slot) const;
    // The window for a nick, none if there is none.
    PrivateWindow* windowOf(const QString& nick) const;
    int QueryCount() const { return m_queryCount; }
    // Every window goes, and the count starts anew.
    void unloadAll();
    // Only those with a peer; the count stays.
    void unloadOpen();

private:
    void checkIgnored(const QString& nick);
    PrivateWindow& freeWindow(int& slot);
    int lastSlot() const;

    PrivateWindowFactory& m_windows;
    Switches m_switches;
    BlockedRows m_ignoreRows;
    BoundedArray<PrivateWindow*, 1, 30> m_queries;
    Int16 m_queryCount;
};
