#include "text/TalkLog.h"

#include "platform/Clock.h"
#include "settings/KeptFile.h"
#include "text/TextWriter.h"

#include <QDir>
#include <QFile>
#include <QUrl>

#include <cerrno>
#include <cstring>

namespace {

using namespace Qt::StringLiterals;

constexpr int collectMilliseconds = 500;
constexpr int patienceMilliseconds = 2000;
constexpr qsizetype longestName = 150; // of the 255 bytes that file systems allow

QByteArray written(const TalkLog::Line& line)
{
    const QString text = TextWriter::plainText(line.text);
    return QString("["_L1 % line.when.toString(u"HH:mm:ss"_s) % "] "_L1 % text % u'\n').toUtf8();
}

// Empty, or what was in the way.
QString append(const QString& path, const QByteArray& text)
{
    if (!KeptFile(path).isOurs())
        return u"it is not an ordinary file"_s;
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered,
                   QFile::ReadOwner | QFile::WriteOwner))
        return file.errorString();
    errno = 0;
    if (file.write(text) == text.size())
        return {};
    return errno == 0 ? file.errorString() : QString::fromLocal8Bit(std::strerror(errno));
}

struct Trouble
{
    QString path;
    QString why;
};

QList<Trouble> writeLines(const QString& folder, const QList<TalkLog::Line>& lines)
{
    QMap<QString, QByteArray> files;
    for (const TalkLog::Line& line : lines)
        files[folder + u'/' + TalkLog::fileOf(line.name, line.when.date())] += written(line);
    QList<Trouble> troubles;
    if (!makePrivateFolder(folder))
        return {{folder, u"there is no such folder"_s}};
    for (auto file = files.cbegin(); file != files.cend(); ++file) {
        if (const QString why = append(file.key(), file.value()); !why.isEmpty())
            troubles += Trouble{file.key(), why};
    }
    return troubles;
}

} // namespace

TalkLog::TalkLog(QString folder, const Clock& clock, Notices notices)
    : m_folder(std::move(folder))
    , m_clock(clock)
    , m_notices(std::move(notices))
{
    if (m_folder.startsWith("~/"_L1) || QDir::isRelativePath(m_folder))
        m_folder = QDir::home().filePath(m_folder.startsWith(u'~') ? m_folder.mid(2) : m_folder);
    m_soon.setSingleShot(true);
    m_soon.setInterval(collectMilliseconds);
    connect(&m_soon, &QTimer::timeout, this, &TalkLog::write);
    m_writer.setMaxThreadCount(1); // lines stay in their order
}

TalkLog::~TalkLog()
{
    finish();
}

void TalkLog::keep(const QString& name, const QString& text)
{
    m_lines.append({m_clock.now(), name, text});
    if (!m_soon.isActive())
        m_soon.start();
}

void TalkLog::write()
{
    if (m_lines.isEmpty())
        return;
    m_writer.start([this, folder = m_folder, lines = std::exchange(m_lines, {})] {
        for (const Trouble& trouble : writeLines(folder, lines))
            QMetaObject::invokeMethod(this, [this, trouble] {
                m_notices.notKept(trouble.path, trouble.why, u"what was said"_s);
            });
    });
}

void TalkLog::finish()
{
    m_soon.stop();
    write();
    m_writer.waitForDone(patienceMilliseconds);
}

QString TalkLog::fileOf(const QString& name, const QDate& day)
{
    // Nothing in it can lead to another folder, hide the file or mean something to a shell.
    QByteArray safe = QUrl::toPercentEncoding(name.toLower(), "#=", ".~");
    if (safe.size() > longestName)
        safe = safe.left(longestName) + '+' + QByteArray::number(qHash(name.toLower()), 16);
    return QString::fromLatin1(safe) + u'.' + day.toString(Qt::ISODate) + ".txt"_L1;
}
