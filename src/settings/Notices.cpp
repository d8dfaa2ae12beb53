#include "settings/Notices.h"

#include <QDir>
#include <QSet>

#include <utility>

namespace {

using namespace Qt::StringLiterals;

constexpr qsizetype longestValue = 60; // of what can be anything, in a line that is to be read

QString shown(const QString& path)
{
    return QDir::toNativeSeparators(path);
}

} // namespace

struct Notices::State
{
    Tell tell;
    QSet<QString> files;
};

Notices::Notices(Tell tell)
    : m_state(std::make_shared<State>(State{std::move(tell), {}}))
{
}

void Notices::notKept(const QString& path, const QString& why, const QString& what) const
{
    tellOnce(path, shown(path) + ": "_L1 + why + ". Not kept: "_L1 + what + u'.');
}

void Notices::notRead(const QString& path, const QString& why) const
{
    tellOnce(path, shown(path) + ": "_L1 + why + ". What it holds does not count."_L1);
}

void Notices::notUnderstood(const QString& path, const QString& section, const QString& key,
                            const QString& value) const
{
    if (!m_state->tell)
        return;
    const QString start =
        value.size() > longestValue ? QString(value.left(longestValue) + u'…') : value;
    m_state->tell(shown(path) + ": ["_L1 + section + "] "_L1 + key + " is \""_L1 + start +
                  "\", which is no value for it. Correct it, or take the line out."_L1);
}

void Notices::tellOnce(const QString& path, const QString& line) const
{
    if (!m_state->tell || m_state->files.contains(path))
        return;
    m_state->files += path;
    m_state->tell(line);
}
