#include "desktop/MenuTree.h"

#include "controls/ActionEntry.h"

#include <QMenu>
#include <QMenuBar>

#include <array>
#include <vector>

namespace {

using namespace Qt::StringLiterals;

enum class Kind { Entry, CheckedEntry, UncheckedEntry, Menu, Popup, Separator };

struct Row
{
    int level;
    QLatin1StringView name;
    QLatin1StringView caption;
    Kind kind = Kind::Entry;
};

// From top to bottom, as they are read. Some names mean the opposite of what they show, some
// captions share a letter or are misspelt: handlers compare them, so they stay.
constexpr Row rows[]{
    {0, "mnu_File"_L1, "&File"_L1, Kind::Menu},
    {1, "mnu_File_Connect"_L1, "&Connect"_L1},
    {1, "mnu_File_Disconnect"_L1, "&Disconnect"_L1},
    {1, "mnu_File_Register"_L1, "&Register"_L1, Kind::Menu},
    {2, "mnu_register_nickname"_L1, "Your Chat Name"_L1},
    {1, "mnu_options_clear"_L1, "&Get Clear Screen"_L1},
    {1, "LB1"_L1, {}, Kind::Separator},
    {1, "mnu_Terminate"_L1, "&Exit Application"_L1},

    {0, "mnu_option"_L1, "&Option"_L1, Kind::Menu},
    {1, "mnu_file_change"_L1, "&Change"_L1, Kind::Menu},
    {2, "mnu_File_changenick"_L1, "&Your NickName"_L1},
    {2, "mnu_File_changepass"_L1, "&Your Password"_L1},
    {1, "mnu_view_fontsize"_L1, "&Font Settings"_L1},
    {1, "mnu_view_status"_L1, "&Present Status"_L1, Kind::Menu},
    {2, "mnu_status_brb"_L1, "&..:Be Right Back:.."_L1},
    {2, "mnu_away_dinner"_L1, "&..:On The Dinner:.."_L1},
    {2, "mnu_status_lunch"_L1, "&..:On The Lunch:.."_L1},
    {2, "mnu_status_phone"_L1, "&..:On The Phone:.."_L1},
    {2, "mnu_status_busy"_L1, "&..:Busy:.."_L1},
    {2, "mnu_status_afk"_L1, "&..:Away From Keyboard:.."_L1},
    // Lacks a point at its end, so its handler does not know it before a preset has set it.
    {2, "mnu_status_away"_L1, "&..:Away [Own Reason]:."_L1},
    {1, "mnu_options_pm"_L1, "&Recieve/Send Private Chat"_L1, Kind::Menu},
    {2, "mnu_pm_no"_L1, "&Yes"_L1, Kind::CheckedEntry},
    {2, "mnu_pm_yes"_L1, "&No"_L1, Kind::UncheckedEntry},
    {1, "mnu_sound"_L1, "&Get Private Chat Sound"_L1, Kind::Menu},
    {2, "mnu_sound_no"_L1, "&Yes"_L1, Kind::CheckedEntry},
    {2, "mnu_sound_yes"_L1, "&No"_L1, Kind::UncheckedEntry},

    {0, "mnu_view"_L1, "&View"_L1, Kind::Menu},
    {1, "mnu_chan_ban"_L1, "&View Channel Ban List"_L1},
    {1, "mnu_View_Buddylist"_L1, "&View Buddy List Users"_L1},
    {1, "mnu_ingorelist"_L1, "&View Ignore List Users"_L1},

    {0, "mnu_Help"_L1, "&Help"_L1, Kind::Menu},
    {1, "mnu_About"_L1, "&About Application"_L1},
    {1, "mnu_author"_L1, "&About Author/Creator"_L1},
    {1, "LB3"_L1, {}, Kind::Separator},
    {1, "mnu_Homepage"_L1, "&Application Homepage"_L1},

    {0, "mnu_nicks"_L1, "nicks"_L1, Kind::Popup},
    {1, "mnu_nicks_pm"_L1, "Conversation"_L1},
    {1, "mnu_blocked"_L1, "Block Conversation"_L1},
    {1, "mnu_slap"_L1, "&Slap"_L1},
    {1, "mnu_OB"_L1, {}, Kind::Separator},
    {1, "mnu_action"_L1, "&Action"_L1, Kind::Menu},
    {2, "mnu_hi"_L1, "&Hi"_L1},
    {2, "mnu_welcome"_L1, "&Welome"_L1},
    {2, "mnu_hugs"_L1, "&Hugs"_L1},
    {2, "mnu_handshake"_L1, "&Handshakes"_L1},
    {2, "mnu_ownaction"_L1, "Own Action"_L1},
    {1, "mnu_zip"_L1, {}, Kind::Separator},
    {1, "mnu_nicks_whois"_L1, "Whois"_L1},
    {1, "mnu_nicks_op"_L1, "&Op"_L1},
    {1, "mnu_nicks_halfop"_L1, "&Halfop"_L1},
    {1, "mnu_nicks_voice"_L1, "&Voice"_L1},
    {1, "LB5"_L1, {}, Kind::Separator},
    {1, "mnu_nicks_kick"_L1, "Kick this user"_L1},
    {1, "mnu_nicks_ban"_L1, "Ban this user"_L1},
};

} // namespace

MenuTree::MenuTree(QWidget* window)
    : QObject(window)
    , m_bar(new QMenuBar(window))
{
    std::vector<QMenu*> path; // the open menu of each level
    for (const Row& row : rows) {
        path.resize(static_cast<std::size_t>(row.level));
        QMenu* parent = path.empty() ? nullptr : path.back();
        switch (row.kind) {
        case Kind::Menu:
        case Kind::Popup: {
            auto* menu = new QMenu(row.caption, window);
            menu->setObjectName(row.name);
            if (parent)
                parent->addMenu(menu);
            else if (row.kind == Kind::Menu)
                m_bar->addMenu(menu);
            else
                m_popups.insert(row.name, menu);
            path.push_back(menu);
            break;
        }
        case Kind::Separator:
            parent->addSeparator()->setObjectName(row.name);
            break;
        default: {
            auto* action = new ActionEntry(row.caption, window);
            action->setObjectName(row.name);
            if (row.kind != Kind::Entry) {
                action->setCheckable(true);
                action->QAction::setChecked(row.kind == Kind::CheckedEntry);
            }
            parent->addAction(action);
            m_entries.insert(row.name, action);
        }
        }
    }
    entry(u"mnu_File_Disconnect"_s).QAction::setEnabled(false);
}

ActionEntry& MenuTree::entry(const QString& name) const
{
    ActionEntry* action = m_entries.value(name);
    Q_ASSERT(action);
    return *action;
}
