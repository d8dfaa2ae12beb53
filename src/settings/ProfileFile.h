#pragma once

#include "settings/KeptFile.h"
#include "settings/Notices.h"

#include <QString>

// A profile file, read anew for each value, because its owner may edit it while the program runs.
// What cannot be read counts as empty and what cannot be written is not kept; either is told.
class ProfileFile final
{
public:
    // What the user loses when it cannot be written.
    ProfileFile(QString path, QString holds, Notices notices = Notices());

    QString read(const QString& section, const QString& key, const QString& missing) const;
    void write(const QString& section, const QString& key, const QString& value) const;
    // The value that stands there is not one that the key can have.
    void tellNotUnderstood(const QString& section, const QString& key, const QString& value) const;

private:
    KeptFile m_file;
    QString m_holds;
    Notices m_notices;
};
