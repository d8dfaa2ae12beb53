#pragma once

#include <QString>

// The per-user store: text values by application, section and key. Application names are compared
// without case. One file per application below the given folder, readable by its owner only; a
// write that fails is passed over.
class UserStore final
{
public:
    explicit UserStore(QString folder);

    QString GetSetting(const QString& application, const QString& section, const QString& key,
                       const QString& missing = {}) const;
    void SaveSetting(const QString& application, const QString& section, const QString& key,
                     const QString& value) const;

private:
    QString fileOf(const QString& application) const;

    QString m_folder;
};
