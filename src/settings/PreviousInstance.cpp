#include "settings/PreviousInstance.h"

#include "settings/KeptFile.h"

PreviousInstance::PreviousInstance(const QString& folder)
    : m_lock(folder + QStringLiteral("/running.lock"))
{
    makePrivateFolder(folder);
    m_lock.setStaleLockTime(0); // only a process that has died leaves it
    if (KeptFile(m_lock.fileName())
            .isOurs()) // the lock reads what stands there, and a pipe is silent
        m_lock.tryLock(0);
}
