#include "account/NetworkChoice.h"

#include "settings/Settings.h"
#include "settings/UserStore.h"

namespace {

using namespace Qt::StringLiterals;

constexpr auto section = "connect"_L1;
constexpr auto noRoom = "<none>"_L1; // an empty value would ask the server for a room without name

constexpr auto storeApplication = "QuillHarbor"_L1;
constexpr auto storeSection = "networks"_L1;
constexpr auto storeKey = "used"_L1; // parted by blanks
constexpr qsizetype mostUsed = 12;

} // namespace

NetworkChoice NetworkChoice::fromSettings(const Settings& settings)
{
    const auto read = [&](QLatin1StringView key, QLatin1StringView missing) {
        return settings.ReadStored(section, key, missing).trimmed();
    };
    NetworkChoice choice{read("server"_L1, QH_SERVER_HOST ""_L1), read("autojoin"_L1, "#Harbor"_L1),
                         read("charset"_L1, "utf-8"_L1)};
    if (choice.room == noRoom)
        choice.room.clear();
    return choice;
}

void NetworkChoice::save(const Settings& settings, const UserStore& store) const
{
    settings.WriteSetting(section, u"server"_s, server);
    settings.WriteSetting(section, u"autojoin"_s, room.isEmpty() ? QString(noRoom) : room);
    settings.WriteSetting(section, u"charset"_s, charset);
    QStringList used = usedBefore(store);
    used.removeAll(server);
    used.prepend(server);
    store.SaveSetting(storeApplication, storeSection, storeKey, used.mid(0, mostUsed).join(u' '));
}

QStringList NetworkChoice::usedBefore(const UserStore& store)
{
    return store.GetSetting(storeApplication, storeSection, storeKey)
        .split(u' ', Qt::SkipEmptyParts);
}
