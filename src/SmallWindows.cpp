#include "SmallWindows.h"

#include "MainRoom.h"
#include "Session.h"
#include "Surroundings.h"
#include "controls/ActionEntry.h"

using namespace Qt::StringLiterals;

SmallWindows::SmallWindows(const ChatRoomParts& given, MainRoom& main, Session& session)
    : m_given(given)
    , m_window(main.window)
    , palettes(given.handlers, main.ownStyle, main.window)
    , ignoreList([&given, &main, &session] {
        return std::make_unique<IgnoreList>(IgnoreList::Desk{
            given.handlers, given.variables, main.room, session.connection, given.dialogs});
    })
    , queryFactory(queryDesk(main, session))
    , queries(queryFactory,
              {main.window.entry(u"mnu_pm_no"_s), main.window.entry(u"mnu_pm_yes"_s),
               main.window.entry(u"mnu_blocked"_s)},
              [this]() -> ListBox& { return ignoreList->List1(); })
    , buddies({given.handlers, session.connection, given.dialogs, given.store, queries})
    , nickForms({given.variables, main.room, session.connection, session.commands, given.login,
                 given.dialogs, *this, given.handlers})
    , channelLists({given.variables, session.connection, given.surroundings.events, given.handlers},
                   main.room)
{
}

Query::Desk SmallWindows::queryDesk(MainRoom& main, Session& session)
{
    return {
        .handlers = m_given.handlers,
        .variables = m_given.variables,
        .style = main.ownStyle,
        .writer = main.writer,
        .channels = main.channels,
        .clock = m_given.surroundings.clock,
        .server = session.connection,
        .dialogs = m_given.dialogs,
        .events = m_given.surroundings.events,
        .links = m_given.surroundings.links,
        .neighbours = *this,
        .ProcessInput =
            [&session](const QString& target, const QString& text) {
                return session.commands.ProcessInput(target, text);
            },
        .PlayWave = [&main](const QString& name) { main.sounds.PlayWave(name); },
        .look = main.look,
        .written = [&main](RichTextBox& view, const QString& nick,
                           const QString& text) { main.mentions.privateLine(view, nick, text); },
    };
}

QRgb SmallWindows::inputColor() const
{
    return m_window.inputColor().rgb();
}

void SmallWindows::setChannelEnabled(bool enabled)
{
    m_window.setHeld(!enabled);
}
