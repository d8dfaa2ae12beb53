#include "ChatRoom.h"

#include "Surroundings.h"
#include "common/ControlCharacters.h"
#include "common/SessionVariables.h"
#include "common/TextHelpers.h"
#include "controls/ActionEntry.h"
#include "desktop/LineLock.h"
#include "desktop/WebAddresses.h"
#include "platform/Handlers.h"
#include "session/SessionStart.h"
#include "settings/Settings.h"
#include "text/Links.h"

#include <QMenu>

using namespace Qt::StringLiterals;

ChatRoom::ChatRoom(const ChatRoomParts& parts)
    : m_parts(parts)
    , main(m_parts, windows, session)
    , windows(m_parts, main, session)
    , pages(m_parts.handlers, m_parts.surroundings.askWebEngine, main.window)
    , session(m_parts, main, windows, pages)
{
    wireKeys();
    wireClicks();
    wireEntries();
    wireLock();
    showConnected(false);
    connect(&session.connection, &Connection::reported, this,
            [this](const SessionReport& report) { showConnected(report.isConnected()); });
}

void ChatRoom::showConnected(bool connected)
{
    main.window.setConnected(connected);
    windows.queryFactory.setConnected(connected);
}

void ChatRoom::Form_Load()
{
    startSession(main.window, m_parts.login, m_parts.settings, m_parts.surroundings.events,
                 m_parts.variables, main.ownStyle);
    startLog();
}

void ChatRoom::startLog()
{
    const QString folder = beforeNul(m_parts.settings.ReadSetting(u"log"_s, u"folder"_s, {}));
    if (folder.isEmpty())
        return;
    m_log = std::make_unique<TalkLog>(folder, m_parts.surroundings.clock, m_parts.notices);
    main.writer.setCopy([this](const RichTextBox& view, const QString& text) {
        if (const QString name = placeOf(view); !name.isEmpty())
            m_log->keep(name, text);
    });
}

// The room or the chatter whose conversation the view shows; empty for others.
QString ChatRoom::placeOf(const RichTextBox& view) const
{
    if (&view == &main.mainView.view()) {
        const QString& room = main.room.ChannelName;
        // No nick begins so.
        return room.isEmpty() ? "="_L1 + beforeNul(m_parts.variables.ServerHost) : room;
    }
    for (const auto& place : windows.queryFactory.places()) {
        if (place->window() && &view == &place->window()->DataIn())
            return place->QueryNick;
    }
    return {};
}

void ChatRoom::finishLog()
{
    if (m_log)
        m_log->finish();
}

void ChatRoom::wireLock()
{
    // The entry that disconnects can be clicked exactly while a line stands.
    const ActionEntry& standing = main.window.entry(u"mnu_File_Disconnect"_s);
    connect(&standing, &QAction::changed, this, [this, &standing] {
        if (standing.isEnabled())
            main.window.lock().showLine(session.sock.RemoteHost, session.sock.privacy());
        else
            main.window.lock().showNoLine();
    });
}

void ChatRoom::wireKeys()
{
    main.window.setKeyHooks({
        .topicKeyDown = [this](int keyCode) { return main.topicField.KeyDown(keyCode); },
        .topicKeyPress = [this](int character) { return main.topicField.KeyPress(character); },
        .inputKeyDown = [this](int keyCode) { return main.inputLine.KeyDown(keyCode); },
        .inputKeyPress = [this](int character) { return main.inputLine.KeyPress(character); },
    });
}

struct ChatRoom::Click
{
    void (Channel::*signal)();
    void (*handler)(ChatRoom& house);
};

// The controls of the main window.
const ChatRoom::Click ChatRoom::clicks[]{
    {&Channel::check1_Click, [](ChatRoom& house) { house.windows.palettes.showSmileys(); }},
    {&Channel::check2_Click, [](ChatRoom& house) { house.windows.palettes.showColors(); }},
    {&Channel::Command3_Click, [](ChatRoom& house) { house.m_parts.smallForms.showFontOption(); }},
    {&Channel::command1_Click, [](ChatRoom& house) { house.windows.ignoreList->Show(); }},
    {&Channel::authorLinkClicked, [](ChatRoom& house) { house.m_parts.smallForms.showAuthor(); }},
    {&Channel::Label1_Click,
     [](ChatRoom& house) { house.main.nickActions.click(u"mnu_ownaction"_s); }},
    {&Channel::lstNicks_DblClick,
     [](ChatRoom& house) { house.main.nickActions.lstNicks_DblClick(); }},
    {&Channel::closedToTray, [](ChatRoom& house) { house.m_parts.login.Show(); }},
};

void ChatRoom::wireClicks()
{
    const Handlers& handlers = m_parts.handlers;
    Channel* window = &main.window;
    for (const Click& click : clicks)
        handlers.connect(window, click.signal, this, [this, &click] { click.handler(*this); });
    handlers.connect(window, &Channel::Check3_Click, this, [this](bool bold) {
        main.ownStyle.BoldPrefix = bold ? QString(strBold) : QString();
    });
    handlers.connect(window, &Channel::Check4_Click, this, [this](bool underline) {
        main.ownStyle.UnderlinePrefix = underline ? QString(strUnderline) : QString();
    });
    handlers.connect(window, &Channel::lstNicks_RightButtonDown, this, [this](const QPoint& at) {
        main.nickActions.lstNicks_MouseDown();
        main.window.menus().nicks()->popup(at);
    });
}

struct ChatRoom::Entry
{
    QLatin1StringView name;
    void (*handler)(ChatRoom& house);
};

// The entries of MenuTree that no table of actions, presences or options has. What stands in no
// table does nothing.
const ChatRoom::Entry ChatRoom::entries[]{
    {"mnu_File_Connect"_L1,
     [](ChatRoom& house) { house.session.connection.mnu_File_Connect_Click(); }},
    {"mnu_File_Disconnect"_L1,
     [](ChatRoom& house) { house.session.connection.mnu_File_Disconnect_Click(); }},
    {"mnu_register_nickname"_L1,
     [](ChatRoom& house) { house.windows.nickForms.mnu_register_nickname_Click(); }},
    {"mnu_Terminate"_L1, [](ChatRoom& house) { house.session.connection.mnu_terminate_Click(); }},
    {"mnu_File_changenick"_L1,
     [](ChatRoom& house) { house.windows.nickForms.mnu_File_changenick_Click(); }},
    {"mnu_File_changepass"_L1,
     [](ChatRoom& house) { house.windows.nickForms.mnu_File_changepass_Click(); }},
    {"mnu_view_fontsize"_L1, [](ChatRoom& house) { house.m_parts.smallForms.showFontOption(); }},
    {"mnu_chan_ban"_L1, [](ChatRoom& house) { house.windows.channelLists.mnu_chan_ban_Click(); }},
    {"mnu_View_Buddylist"_L1, [](ChatRoom& house) { house.windows.buddies.Show(); }},
    {"mnu_ingorelist"_L1, [](ChatRoom& house) { house.windows.ignoreList->Show(); }},
    {"mnu_About"_L1, [](ChatRoom& house) { house.m_parts.smallForms.showAbout(); }},
    {"mnu_author"_L1, [](ChatRoom& house) { house.m_parts.smallForms.showAuthor(); }},
    {"mnu_Homepage"_L1,
     [](ChatRoom& house) { house.m_parts.surroundings.links.OpenLink(web_addresses::home()); }},
};

void ChatRoom::wireEntries()
{
    const auto onClick = [this](const QString& name, auto handler) {
        m_parts.handlers.connect(&main.window.entry(name), &QAction::triggered, this, handler);
    };
    for (const Entry& entry : entries)
        onClick(entry.name, [this, &entry] { entry.handler(*this); });

    const auto onTable = [&](auto& table) {
        for (const QString& name : table.entries())
            onClick(name, [&table, name] { table.click(name); });
    };
    onTable(main.nickActions);
    onTable(main.presence);
    onTable(main.options);
}
