#pragma once

#include "settings/ProfileFile.h"

#include <QMap>

// The settings file. Every text comes back 255 characters long, padded with code 0 behind the
// value: what is joined into longer texts takes the padding along to the wire.
class Settings final
{
public:
    static constexpr int bufferLength = 255;

    explicit Settings(const QString& path)
        : m_file(path)
    {
    }

    QString ReadSetting(const QString& section, const QString& key, const QString& missing) const;
    void WriteSetting(const QString& section, const QString& key, const QString& value) const;

    // For this run a value of the command line stands before the file's.
    void overrule(const QString& section, const QString& key, const QString& value);

private:
    ProfileFile m_file;
    QMap<QString, QString> m_overruled;
};
