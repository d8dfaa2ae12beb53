#include "settings/ProfileFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

// Names and values stay UTF-8 bytes: nothing is to be converted. The definitions of its templates
// are taken from the header, too.
#define SI_NO_CONVERSION
#define SI_IMPLEMENTATION
#include <SimpleIni.h>

#include <string>

namespace {

constexpr qint64 largestFile = 1024 * 1024; // anything beyond is no settings file of ours

struct Profile final : CSimpleIniA
{
    explicit Profile(const QString& path)
        : CSimpleIniA(/*utf8*/ true, /*multiKey*/ false, /*multiLine*/ false)
    {
        SetSpaces(false);
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            return;
        const QByteArray data = file.read(largestFile);
        LoadData(data.constData(), static_cast<std::size_t>(data.size()));
    }
};

QString withoutQuotes(const QString& value)
{
    const bool quoted = value.size() >= 2 && value.front() == value.back() &&
                        (value.front() == u'"' || value.front() == u'\'');
    return quoted ? value.mid(1, value.size() - 2) : value;
}

} // namespace

ProfileFile::ProfileFile(QString path)
    : m_path(std::move(path))
{
}

QString ProfileFile::read(const QString& section, const QString& key, const QString& missing) const
{
    const Profile profile(m_path);
    const char* value =
        profile.GetValue(section.toUtf8().constData(), key.toUtf8().constData(), nullptr);
    return value ? withoutQuotes(QString::fromUtf8(value)) : missing;
}

void ProfileFile::write(const QString& section, const QString& key, const QString& value) const
{
    Profile profile(m_path);
    profile.SetValue(section.toUtf8().constData(), key.toUtf8().constData(),
                     value.toUtf8().constData());
    std::string text;
    if (profile.Save(text) < 0 || !QDir().mkpath(QFileInfo(m_path).path()))
        return;
    QSaveFile file(m_path);
    if (file.open(QIODevice::WriteOnly) &&
        file.write(text.data(), static_cast<qint64>(text.size())) >= 0)
        file.commit();
}
