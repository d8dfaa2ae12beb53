#include "contacts/WatchedNames.h"

#include "common/Conversions.h"
#include "controls/ListBox.h"
#include "platform/Dialogs.h"
#include "platform/Handlers.h"
#include "settings/UserStore.h"

#include <optional>

namespace {

using namespace Qt::StringLiterals;

constexpr auto application = "Listsetup"_L1;
constexpr auto section = "Sect"_L1;
constexpr auto key = "boty1"_L1; // the count; with an index behind it a name

} // namespace

void WatchedNames::load() const
{
    const auto stored = [this](const QString& index) {
        return m_parts.store.GetSetting(application, section, key + index);
    };
    std::optional<Int16> count;
    skipRest([&] { count = toInt16(stored({})); });
    if (!count) {
        // Without a count the first row is what stands under the key of the count: at first use
        // an empty row, which stays with the list from then on.
        m_parts.lstSetup.AddItem(stored({}));
        return;
    }
    for (int index = 0; index < *count; ++index)
        m_parts.lstSetup.AddItem(stored(QString::number(index)));
}

void WatchedNames::save() const
{
    const int count = m_parts.lstSetup.ListCount();
    UserStore::Values values;
    for (int index = 0; index < count; ++index)
        values += {key + QString::number(index), m_parts.lstSetup.List(index)};
    values += {key, QString::number(count)};
    m_parts.store.SaveSettings(application, section, values);
}

bool WatchedNames::add() const
{
    QString nick = m_parts.dialogs.InputBox(u"Enter a nickname to add"_s, u"Whois Online"_s);
    if (nick.isEmpty())
        return false;
    nick.remove(u' ');
    if (isWatched(nick))
        return false;
    m_parts.lstSetup.AddItem(nick);
    return true;
}

bool WatchedNames::isWatched(const QString& nick) const
{
    const QString wanted = nick.toLower();
    // The place behind the last row counts as well. It is empty, so an empty name is always there.
    for (int index = 0; index <= m_parts.lstSetup.ListCount(); ++index) {
        if (m_parts.lstSetup.List(index).toLower() == wanted)
            return true;
    }
    return false;
}

void WatchedNames::removeSelected() const
{
    m_parts.lstSetup.RemoveItem(m_parts.lstSetup.ListIndex());
}

QString WatchedNames::all() const
{
    QString names;
    for (int index = 0; index < m_parts.lstSetup.ListCount(); ++index)
        names += m_parts.lstSetup.List(index) + u' ';
    return names;
}
