#include "contacts/BuddyPolling.h"

#include "common/TextHelpers.h"
#include "contacts/WatchedNames.h"
#include "wire/LineSink.h"
#include "wire/Winsock.h"

namespace {

using namespace Qt::StringLiterals;

constexpr int ticksBetweenPolls = 2;

} // namespace

void BuddyPolling::tmrRefresh_Timer()
{
    if (++RefreshTicks; RefreshTicks != ticksBetweenPolls)
        return;
    RefreshTicks = 0;
    cmdRefresh_Click();
}

void BuddyPolling::cmdRefresh_Click() const
{
    if (m_server.sockState() == Winsock::Closed)
        return;
    const QString names = m_names.all();
    if (!trimBlanks(names).isEmpty())
        m_server.SendData("ISON "_L1 + names);
}
