#pragma once

#include <QLockFile>

// Whether another copy of the program runs for the same user and folder. Holds the place while it
// lives. Where no lock can be made there is none to be found.
class PreviousInstance final
{
public:
    explicit PreviousInstance(const QString& folder);

    bool found() const { return m_lock.error() == QLockFile::LockFailedError; }

private:
    QLockFile m_lock;
};
