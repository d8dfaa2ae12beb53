#include "settings/UserStore.h"

#include <QDir>
#include <QFile>
#include <QSettings>

namespace {

using namespace Qt::StringLiterals;

constexpr QFile::Permissions ownerOnly = QFile::ReadOwner | QFile::WriteOwner;

QString pathOf(const QString& section, const QString& key)
{
    return section + u'/' + key;
}

// The file exists with its final permissions before a password goes into it.
void prepare(const QString& path)
{
    QFile file(path);
    if (!file.exists() && file.open(QIODevice::NewOnly | QIODevice::WriteOnly, ownerOnly))
        file.close();
    file.setPermissions(ownerOnly);
}

} // namespace

UserStore::UserStore(QString folder)
    : m_folder(std::move(folder))
{
}

QString UserStore::GetSetting(const QString& application, const QString& section,
                              const QString& key, const QString& missing) const
{
    const QSettings store(fileOf(application), QSettings::IniFormat);
    return store.value(pathOf(section, key), missing).toString();
}

void UserStore::SaveSetting(const QString& application, const QString& section, const QString& key,
                            const QString& value) const
{
    if (!QDir().mkpath(m_folder))
        return;
    const QString path = fileOf(application);
    prepare(path);
    QSettings store(path, QSettings::IniFormat);
    store.setValue(pathOf(section, key), value);
    store.sync();
    QFile::setPermissions(path, ownerOnly);
}

QString UserStore::fileOf(const QString& application) const
{
    return m_folder + u'/' + application.toLower() + ".store"_L1;
}
