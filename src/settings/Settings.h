#pragma once

#include "common/RunTimeError.h"
#include "settings/ProfileFile.h"

#include <QMap>

// The settings file. Every text comes back 255 characters long, padded with code 0 behind the
// value: what is joined into longer texts takes the padding along to the wire.
class Settings final
{
public:
    static constexpr int bufferLength = 255;

    explicit Settings(const QString& path, const Notices& notices = Notices());

    QString ReadSetting(const QString& section, const QString& key, const QString& missing) const;
    // Of a switch that is off unless the file says "true".
    bool isOn(const QString& section, const QString& key) const;
    // What the file holds, whatever the command line says; not padded.
    QString ReadStored(const QString& section, const QString& key, const QString& missing) const
    {
        return m_file.read(section, key, missing);
    }
    void WriteSetting(const QString& section, const QString& key, const QString& value) const;

    // Reads a value that has to be converted. A text that cannot be is told, and the failure of
    // the conversion goes on to the caller.
    template<typename Convert>
    auto read(const QString& section, const QString& key, const QString& missing,
              Convert convert) const
    {
        const QString value = ReadSetting(section, key, missing);
        try {
            return convert(value);
        } catch (const RunTimeError&) {
            tellNotUnderstood(section, key, value);
            throw;
        }
    }

    // For this run a value of the command line stands before the file's.
    void overrule(const QString& section, const QString& key, const QString& value);
    // The command line's value, or an empty text.
    QString overruling(const QString& section, const QString& key) const;

private:
    void tellNotUnderstood(const QString& section, const QString& key, const QString& value) const;

    ProfileFile m_file;
    QMap<QString, QString> m_overruled;
};
