#pragma once

#include "settings/Notices.h"

#include <QString>

// Programs that start with the desktop: one XDG autostart entry per name below the given folder.
// An entry can be set or deleted only while the key is open, and nothing ever closes it. An entry
// that cannot be written is told.
class RunKey final
{
public:
    explicit RunKey(QString autostartFolder, Notices notices = Notices());

    // False when the folder cannot be made or written.
    bool Open();
    void SetValue(const QString& name, const QString& program) const;
    void DeleteValue(const QString& name) const;

private:
    QString entryOf(const QString& name) const;

    QString m_folder;
    Notices m_notices;
    bool m_open = false;
};
