#include "commands/Identifiers.h"

#include "common/SessionVariables.h"
#include "platform/Handlers.h"
#include "room/ChannelTable.h"
#include "wire/LineSink.h"

using namespace Qt::StringLiterals;

namespace {

// The revision stands right behind the minor version.
constexpr auto programVersion = QH_VERSION_MAJOR "." QH_VERSION_MINOR QH_VERSION_PATCH ""_L1;

} // namespace

QString Identifiers::Identifier(const QString& target, const QString& name) const
{
    using Self = const Identifiers&;
    using Value = QString (*)(Self self, const QString& target);
    struct Row
    {
        QLatin1StringView name;
        Value value;
    };
    static constexpr Value targetItself = [](Self, const QString& target) { return target; };
    static constexpr Row rows[]{
        {"version"_L1, [](Self, const QString&) { return QString(programVersion); }},
        {"chan"_L1, targetItself},
        {"channel"_L1, targetItself},
        {"ch"_L1, targetItself},
        {"me"_L1, [](Self self, const QString&) { return self.m_parts.variables.MyNick; }},
        {"server"_L1, [](Self self, const QString&) { return self.m_parts.server.remoteHost(); }},
        {"port"_L1,
         [](Self self, const QString&) {
             return QString::number(self.m_parts.server.remotePort());
         }},
        {"randnick"_L1, [](Self self, const QString& target) { return self.randomNick(target); }},
        {"date"_L1, [](Self self, const QString&) { return self.m_parts.clock.shortDate(); }},
        {"time"_L1, [](Self self, const QString&) { return self.m_parts.clock.longTime(); }},
    };
    const QString lowered = name.toLower();
    QString value;
    for (const Row& row : rows) {
        if (lowered == row.name)
            skipRest([&] { value = row.value(*this, target); });
    }
    return value;
}

QString Identifiers::randomNick(const QString& target) const
{
    if (!target.startsWith(u'#'))
        return {};
    const NickList& nicks = m_parts.channels.Channels(m_parts.channels.FindChannel(target)).nicks;
    return nicks.GetNick(static_cast<int>(m_parts.random() * nicks.NickCount()) + 1);
}
