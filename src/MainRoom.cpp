#include "MainRoom.h"

#include "ChatRoomParts.h"
#include "Session.h"
#include "SmallWindows.h"
#include "Surroundings.h"
#include "controls/ActionEntry.h"
#include "view/PictureCache.h"

using namespace Qt::StringLiterals;

MainRoom::MainRoom(const ChatRoomParts& given, SmallWindows& windows, Session& session)
    : pictures(std::make_shared<PictureCache>())
    , window(given.handlers, given.dialogs, pictures)
    , room(window)
    , channels(room)
    , writer(given.variables)
    , mainView(writer, window.DataIn())
    , status(mainView)
    , sounds(window.entry(u"mnu_sound_no"_s), window.entry(u"mnu_sound_yes"_s),
             given.surroundings.waves, Sounds::programFolders())
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
