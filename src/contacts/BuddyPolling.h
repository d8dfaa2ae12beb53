#pragma once

#include "common/Int16.h"

class ServerLink;
class WatchedNames;

// Nobody says when the watched names come and go, so the server is asked at every second tick of a
// timer.
class BuddyPolling final
{
public:
    BuddyPolling(const WatchedNames& names, ServerLink& server)
        : m_names(names)
        , m_server(server)
    {
    }

    void tmrRefresh_Timer();
    void cmdRefresh_Click() const;

private:
    const WatchedNames& m_names;
    ServerLink& m_server;
    Int16 RefreshTicks;
};
