#include "settings/Settings.h"

#include "common/TextHelpers.h"

namespace {

using namespace Qt::StringLiterals;

QString nameOf(const QString& section, const QString& key)
{
    return section + u'/' + key;
}

} // namespace

Settings::Settings(const QString& path, const Notices& notices)
    : m_file(path, u"the ticks of the sign-in form"_s, notices)
{
}

QString Settings::ReadSetting(const QString& section, const QString& key,
                              const QString& missing) const
{
    const auto overruled = m_overruled.constFind(nameOf(section, key));
    const QString value =
        overruled == m_overruled.cend() ? m_file.read(section, key, missing) : *overruled;
    // The last character of the buffer is always code 0.
    return value.left(bufferLength - 1).leftJustified(bufferLength, QChar(u'\0'));
}

bool Settings::isOn(const QString& section, const QString& key) const
{
    const QString value = beforeNul(ReadSetting(section, key, {}));
    return value.trimmed().compare(QLatin1StringView("true"), Qt::CaseInsensitive) == 0;
}

void Settings::WriteSetting(const QString& section, const QString& key, const QString& value) const
{
    m_file.write(section, key, value);
}

void Settings::tellNotUnderstood(const QString& section, const QString& key,
                                 const QString& value) const
{
    m_file.tellNotUnderstood(section, key, beforeNul(value));
}

QString Settings::overruling(const QString& section, const QString& key) const
{
    return m_overruled.value(nameOf(section, key));
}

void Settings::overrule(const QString& section, const QString& key, const QString& value)
{
    m_overruled.insert(nameOf(section, key), value);
}
