#pragma once

#include <QString>

// A profile file (sections, keys, values) with case-insensitive names. It is read anew for each
// value, and comments in it survive a write. A file that is not there or cannot be read is empty;
// a write that fails is passed over. UTF-8.
class ProfileFile final
{
public:
    explicit ProfileFile(QString path);

    QString read(const QString& section, const QString& key, const QString& missing) const;
    void write(const QString& section, const QString& key, const QString& value) const;

private:
    QString m_path;
};
