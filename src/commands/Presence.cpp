#include "commands/Presence.h"

#include "commands/CommandProcessor.h"
#include "common/OneLine.h"
#include "controls/MenuEntry.h"
#include "platform/Dialogs.h"
#include "room/Room.h"
#include "wire/LineSink.h"
#include "wire/Winsock.h"

#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr auto ownReason = "mnu_status_away"_L1;
constexpr auto captionAway = "&..:Away [Own Reason]:.."_L1;
constexpr auto captionOnline = "&..:Online:.."_L1;

struct Preset
{
    QLatin1StringView entry;
    QLatin1StringView reason;
    QLatin1StringView announcement;
};

constexpr std::array<Preset, 5> presets{{
    {"mnu_status_brb"_L1, "I will be back later."_L1, "I will be right back."_L1},
    {"mnu_status_lunch"_L1, "I am having my lunch"_L1, "I'm having my lunch."_L1},
    {"mnu_status_phone"_L1, "I am on the phone"_L1, "I'm on the phone."_L1},
    {"mnu_status_busy"_L1, "I am busy"_L1, "I'm busy right now."_L1},
    {"mnu_status_afk"_L1, "I am away from the keyboard"_L1, "I'm away from the keyboard."_L1},
}};

} // namespace

QStringList Presence::entries()
{
    QStringList names{ownReason};
    for (const Preset& preset : presets)
        names += preset.entry;
    return names;
}

void Presence::click(const QString& entry)
{
    if (m_parts.server.sockState() != Winsock::Connected)
        return;
    if (entry == ownReason)
        return mnu_status_away_Click();
    for (const Preset& preset : presets) {
        if (entry != preset.entry)
            continue;
        m_parts.server.SendData("AWAY "_L1 + preset.reason);
        m_parts.mnu_status_away.setCaption(captionOnline);
        announce("has changed status: "_L1 + preset.announcement);
    }
}

void Presence::mnu_status_away_Click()
{
    const QString caption = m_parts.mnu_status_away.Caption();
    if (caption == captionAway) {
        // Cancel gives no text; the room is told all the same.
        const QString reason =
            oneLine(m_parts.dialogs.InputBox(u"Type Your Away Message"_s, u"Away Message"_s));
        m_parts.server.SendData("AWAY "_L1 + reason);
        announce("has changed status: "_L1 + reason);
        m_parts.mnu_status_away.setCaption(captionOnline);
    } else if (caption == captionOnline) {
        m_parts.server.SendData(u"AWAY "_s);
        announce(u"is online now: I'm Online."_s);
        m_parts.mnu_status_away.setCaption(captionAway);
    }
}

void Presence::announce(const QString& text)
{
    m_parts.server.SendData(
        m_parts.commands.ProcessInput(m_parts.room.ChannelName, "me "_L1 + text));
}
