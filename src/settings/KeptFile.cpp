#include "settings/KeptFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <cerrno>
#include <cstring>
#include <utility>

#include <unistd.h>

namespace {

using namespace Qt::StringLiterals;

constexpr qint64 largestFile = 16 * 1024 * 1024; // anything beyond is no file of ours
constexpr QFile::Permissions fileOfOwner = QFile::ReadOwner | QFile::WriteOwner;
constexpr QFile::Permissions folderOfOwner = fileOfOwner | QFile::ExeOwner;

QString notOrdinary()
{
    return u"it is not an ordinary file"_s;
}

// A file system that cannot do it at all is no reason to keep nothing.
bool syncToDisk(int descriptor)
{
    return ::fsync(descriptor) == 0 || errno == EINVAL || errno == ENOSYS || errno == ENOTSUP;
}

} // namespace

KeptFile::KeptFile(QString path)
    : m_path(std::move(path))
{
}

bool KeptFile::isOurs() const
{
    // A link leads on to what is asked; a dangling one to a file that is still to be made.
    const QFileInfo info(m_path);
    return !info.exists() || info.isFile();
}

KeptFile::Content KeptFile::read() const
{
    if (!isOurs())
        return {{}, notOrdinary()};
    QFile file(m_path);
    if (!file.exists())
        return {};
    if (!file.open(QIODevice::ReadOnly))
        return {{}, file.errorString()};
    if (file.size() > largestFile)
        return {{}, u"it is too large"_s};
    QByteArray bytes = file.readAll();
    if (file.error() != QFile::NoError)
        return {{}, file.errorString()};
    return {std::move(bytes), {}};
}

QString KeptFile::replace(const QByteArray& content, Access access) const
{
    if (!isOurs())
        return notOrdinary();
    const QString folder = QFileInfo(m_path).path();
    if (!makePrivateFolder(folder))
        return "there is no folder "_L1 + folder;
    const bool isNew = !QFileInfo::exists(m_path);
    QSaveFile file(m_path);
    if (!file.open(QIODevice::WriteOnly))
        return file.errorString();
    if (isNew || access == Access::OwnerOnly)
        file.setPermissions(fileOfOwner); // before a password goes into it
    errno = 0;                            // the toolkit's own text for it is "Unknown error"
    // Committing does not notice what fails while the last bytes leave their buffer.
    if (file.write(content) != content.size() || !file.flush() || !syncToDisk(file.handle())) {
        const int reason = errno;
        file.cancelWriting();
        return reason == 0 ? file.errorString() : QString::fromLocal8Bit(std::strerror(reason));
    }
    return file.commit() ? QString() : file.errorString();
}

void KeptFile::remove() const
{
    if (QFileInfo(m_path).isFile())
        QFile::remove(m_path);
}

void KeptFile::closeToOthers() const
{
    if (QFileInfo(m_path).isFile())
        QFile::setPermissions(m_path, fileOfOwner);
}

bool makePrivateFolder(const QString& path)
{
    const QFileInfo info(path);
    if (info.exists())
        return info.isDir();
    return makePrivateFolder(info.absolutePath()) &&
           QDir().mkdir(info.absoluteFilePath(), folderOfOwner);
}
