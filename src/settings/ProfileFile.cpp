#include "settings/ProfileFile.h"

#include "common/OneLine.h"
#include "settings/ProfileText.h"

#include <utility>

namespace {

bool isQuoted(const QString& value)
{
    return value.size() >= 2 && value.front() == value.back() &&
           (value.front() == u'"' || value.front() == u'\'');
}

// Quotes keep blanks, and quotes, at the ends of a value.
QString quotedIfNeeded(const QString& value)
{
    return value != value.trimmed() || isQuoted(value) ? QString(u'"' + value + u'"') : value;
}

QString withoutQuotes(const QString& value)
{
    return isQuoted(value) ? value.mid(1, value.size() - 2) : value;
}

} // namespace

ProfileFile::ProfileFile(QString path, QString holds, Notices notices)
    : m_file(std::move(path))
    , m_holds(std::move(holds))
    , m_notices(std::move(notices))
{
}

QString ProfileFile::read(const QString& section, const QString& key, const QString& missing) const
{
    KeptFile::Content content = m_file.read();
    if (!content.trouble.isEmpty())
        m_notices.notRead(m_file.path(), content.trouble);
    const std::optional<QByteArray> value =
        ProfileText(std::move(content.bytes)).value(section.toUtf8(), key.toUtf8());
    return value ? withoutQuotes(QString::fromUtf8(*value)) : missing;
}

void ProfileFile::write(const QString& section, const QString& key, const QString& value) const
{
    const KeptFile::Content content = m_file.read();
    if (!content.trouble.isEmpty()) // what cannot be read must not be lost by writing
        return m_notices.notKept(m_file.path(), content.trouble, m_holds);
    ProfileText text(content.bytes);
    text.setValue(section.toUtf8(), key.toUtf8(), quotedIfNeeded(oneLine(value)).toUtf8());
    if (text.text() == content.bytes)
        return;
    if (const QString why = m_file.replace(text.text()); !why.isEmpty())
        m_notices.notKept(m_file.path(), why, m_holds);
}

void ProfileFile::tellNotUnderstood(const QString& section, const QString& key,
                                    const QString& value) const
{
    m_notices.notUnderstood(m_file.path(), section, key, value);
}
