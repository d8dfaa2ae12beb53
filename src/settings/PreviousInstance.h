#pragma once

#include <QLockFile>

// Whether another copy of the program runs for the same user and folder. Holds the place while it
// lives.
class PreviousInstance final
{
public:
    explicit PreviousInstance(const QString& folder);

    bool found() const { return !m_lock.isLocked(); }

private:
    QLockFile m_lock;
};
