#pragma once

#include "common/Int16.h"

#include <QString>

class Dialogs;
class ListBox;
class ServerLink;
class UserStore;

// Watches a list of nicknames. Nobody says when they come and go, so the server is asked at every
// second tick of a timer, and its answer replaces the list of those who are there.
class BuddyPolling final
{
public:
    struct Parts
    {
        ListBox& lstSetup; // the watched names
        ListBox& lstNicks; // those of them that the server last reported
        ServerLink& server;
        Dialogs& dialogs;
        const UserStore& store;
    };

    explicit BuddyPolling(const Parts& parts)
        : m_parts(parts)
    {
    }

    // The names of the last session come back; the next ones are saved only here.
    void Form_Load();
    void Form_Unload() const;

    void tmrRefresh_Timer();
    void cmdRefresh_Click() const;
    void cmdAdd_Click() const;
    void cmdRem_Click() const;
    // Names separated by blanks.
    void AddUsers(const QString& names) const;

private:
    bool isWatched(const QString& nick) const;

    Parts m_parts;
    Int16 RefreshTicks;
};
