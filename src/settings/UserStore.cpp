#include "settings/UserStore.h"

#include "settings/KeptFile.h"
#include "settings/ProfileText.h"
#include "settings/StoredText.h"

namespace {

using namespace Qt::StringLiterals;

QString holdings(const QString& application)
{
    return application.compare("Listsetup"_L1, Qt::CaseInsensitive) == 0
               ? u"the buddy list"_s
               : u"the nickname and the password"_s;
}

} // namespace

UserStore::UserStore(QString folder, Notices notices)
    : m_folder(std::move(folder))
    , m_notices(std::move(notices))
{
}

QString UserStore::GetSetting(const QString& application, const QString& section,
                              const QString& key, const QString& missing) const
{
    const KeptFile file(fileOf(application));
    KeptFile::Content content = file.read();
    if (!content.trouble.isEmpty())
        m_notices.notRead(file.path(), content.trouble);
    const std::optional<QByteArray> value =
        ProfileText(std::move(content.bytes)).value(section.toUtf8(), key.toUtf8());
    return value ? fromStoredText(*value) : missing;
}

void UserStore::SaveSetting(const QString& application, const QString& section, const QString& key,
                            const QString& value) const
{
    SaveSettings(application, section, {{key, value}});
}

void UserStore::SaveSettings(const QString& application, const QString& section,
                             const Values& values) const
{
    const KeptFile file(fileOf(application));
    const KeptFile::Content content = file.read();
    if (!content.trouble.isEmpty())
        return m_notices.notKept(file.path(), content.trouble, holdings(application));
    ProfileText text(content.bytes);
    for (const auto& [key, value] : values)
        text.setValue(section.toUtf8(), key.toUtf8(), toStoredText(value));
    if (text.text() == content.bytes)
        return file.closeToOthers();
    const QString why = file.replace(text.text(), KeptFile::Access::OwnerOnly);
    if (!why.isEmpty())
        m_notices.notKept(file.path(), why, holdings(application));
}

QString UserStore::fileOf(const QString& application) const
{
    return m_folder + u'/' + application.toLower() + ".store"_L1;
}
