#include "MainRoom.h"

#include "ChatRoomParts.h"
#include "Session.h"
#include "SmallWindows.h"
#include "Surroundings.h"
#include "controls/ActionEntry.h"
#include "desktop/NotificationArea.h"
#include "settings/Settings.h"
#include "view/ViewLook.h"

#include <QApplication>

using namespace Qt::StringLiterals;

namespace {

std::shared_ptr<ViewLook> lookOf(const Settings& settings)
{
    auto look = std::make_shared<ViewLook>();
    look->setShowsTimes(settings.isOn(u"display"_s, u"times"_s));
    return look;
}

Mentions::Desk mentionsDesk(const ChatRoomParts& given, const SmallWindows& windows,
                            Channel& window)
{
    return {
        .variables = given.variables,
        // A list that has not been loaded has no rows.
        .isBlocked =
            [&windows](const QString& nick) {
                return windows.ignoreList.isLoaded() && windows.queries.isIgnored(nick);
            },
        .attract = [&window] { QApplication::alert(&window); },
        .notify = [&area = given.surroundings.notificationArea](
                      const QString& title, const QString& body) { area.notify(title, body); },
        .notifies = given.settings.isOn(u"notify"_s, u"mention"_s),
    };
}

} // namespace

MainRoom::MainRoom(const ChatRoomParts& given, SmallWindows& windows, Session& session)
    : look(lookOf(given.settings))
    , window(given.handlers, given.dialogs, look)
    , room(window)
    , channels(room)
    , writer(given.variables)
    , mainView(writer, window.DataIn())
    , status(mainView)
    , sounds(window.entry(u"mnu_sound_no"_s), window.entry(u"mnu_sound_yes"_s),
             given.surroundings.waves, Sounds::programFolders())
    , mentions(mentionsDesk(given, windows, window))
    , topicField(room, session.connection)
    , inputLine(
          {given.variables, ownStyle, room, window, session.connection, writer, given.dialogs})
    , nickActions({given.variables,
                   room,
                   session.connection,
                   session.commands,
                   windows.queries,
                   given.dialogs,
                   {window.entry(u"mnu_nicks_op"_s), window.entry(u"mnu_nicks_halfop"_s),
                    window.entry(u"mnu_nicks_voice"_s)},
                   [&windows]() -> ListBox& { return windows.ignoreList->List1(); }})
    , presence({room, session.connection, session.commands, given.dialogs,
                window.entry(u"mnu_status_away"_s)})
    , options({window.entry(u"mnu_pm_no"_s), window.entry(u"mnu_pm_yes"_s),
               window.entry(u"mnu_sound_no"_s), window.entry(u"mnu_sound_yes"_s), mainView,
               given.dialogs})
{
}
