#include "settings/PreviousInstance.h"

#include <QDir>

PreviousInstance::PreviousInstance(const QString& folder)
    : m_lock(folder + QStringLiteral("/running.lock"))
{
    QDir().mkpath(folder);
    m_lock.setStaleLockTime(0); // only a process that has died leaves it
    m_lock.tryLock(0);
}
