#pragma once

#include "controls/MenuEntry.h"
#include "talk/Blocking.h"

#include <QString>
#include <QStringList>

#include <array>

class CommandProcessor;
class Dialogs;
class QueryTable;
class ServerLink;

// What can be done to the member that is selected in the list of chatters: greetings and actions,
// ranks, kick and ban, block, conversation. Every entry of the menu on a nick ends up here.
class NickActions final
{
public:
    // The entries whose captions say what a click is going to do.
    struct RankEntries
    {
        MenuEntry& mnu_nicks_op;
        MenuEntry& mnu_nicks_halfop;
        MenuEntry& mnu_nicks_voice;
    };

    struct Parts
    {
        const SessionVariables& variables;
        const Room& room;
        ServerLink& server;
        CommandProcessor& commands;
        QueryTable& queries;
        Dialogs& dialogs;
        RankEntries ranks;
        BlockedRows ignoreRows;
    };

    explicit NickActions(Parts parts);

    // The names of the entries that do something.
    static QStringList entries();
    // Other names do nothing. A new conversation raises what OpenQuery raises.
    void click(const QString& entry);

    // Before the menu pops up: the captions follow the ranks of the selected member, which need
    // not be the one under the pointer.
    void lstNicks_MouseDown();
    void lstNicks_DblClick();

private:
    struct Greeting;
    struct Rank;
    struct Action;
    static const std::array<Greeting, 5> greetings;
    static const std::array<Rank, 3> ranks;
    static const std::array<Action, 6> actions;

    QString nick() const;
    bool isConnected() const;
    void sendCommand(const QString& command);
    void changeRank(const Rank& rank);

    void mnu_nicks_pm_Click();
    void mnu_blocked_Click();
    void mnu_ownaction_Click();
    void mnu_nicks_whois_Click();
    void mnu_nicks_kick_Click();
    void mnu_nicks_ban_Click();

    Parts m_parts;
};
