#pragma once

#include "settings/Notices.h"

#include <QList>
#include <QString>

#include <utility>

// The per-user store: text values by application, section and key. Application names are compared
// without case. One file per application below the given folder, readable by its owner only. What
// cannot be read counts as empty and what cannot be written is not kept; either is told.
class UserStore final
{
public:
    using Values = QList<std::pair<QString, QString>>; // keys and what they are to be

    explicit UserStore(QString folder, Notices notices = Notices());

    QString GetSetting(const QString& application, const QString& section, const QString& key,
                       const QString& missing = {}) const;
    void SaveSetting(const QString& application, const QString& section, const QString& key,
                     const QString& value) const;
    // All of them or none.
    void SaveSettings(const QString& application, const QString& section,
                      const Values& values) const;

private:
    QString fileOf(const QString& application) const;

    QString m_folder;
    Notices m_notices;
};
