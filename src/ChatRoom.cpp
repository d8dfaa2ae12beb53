#include "ChatRoom.h"

#include "Surroundings.h"
#include "common/ControlCharacters.h"
#include "controls/ActionEntry.h"
#include "desktop/WebAddresses.h"
#include "desktop/WebToolBar.h"
#include "platform/Handlers.h"
#include "session/SessionStart.h"
#include "text/ColorTables.h"
#include "text/Links.h"
#include "view/PictureCache.h"

#include <QMenu>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

ChatRoom::ChatRoom(const Parts& parts)
    : m_parts(parts)
    , m_smileys([this] {
        auto form = std::make_unique<frmSmileys>(m_parts.handlers);
        m_parts.handlers.connect(form.get(), &frmSmileys::picked, this,
                                 [this](const QString& code) { window.appendToInput(code); });
        return form;
    })
    , m_colors([this] {
        auto form = std::make_unique<frmcolor>(m_parts.handlers);
        m_parts.handlers.connect(form.get(), &frmcolor::picked, this, [this](const QString& code) {
            selectcolor(code);
            window.focusInput();
        });
        return form;
    })
    , m_pictures(std::make_shared<PictureCache>())
    , m_home(makeWebPage(u"Home"_s, web_addresses::home()))
    , m_misc(makeWebPage(u"Misc"_s, web_addresses::misc()))
    , window(parts.handlers, parts.surroundings.dialogs, m_pictures)
    , room(window)
    , channels(room)
    , writer(parts.variables)
    , status(writer, window.DataIn())
    , sounds(window.entry(u"mnu_sound_no"_s), window.entry(u"mnu_sound_yes"_s),
             parts.surroundings.waves, Sounds::programFolders())
    , ignoreList([this] {
        return std::make_unique<IgnoreList>(IgnoreList::Desk{
            m_parts.handlers, m_parts.variables, room, connection, m_parts.surroundings.dialogs});
    })
    , queryFactory({
          .handlers = parts.handlers,
          .variables = parts.variables,
          .style = ownStyle,
          .writer = writer,
          .channels = channels,
          .clock = parts.surroundings.clock,
          .server = connection,
          .dialogs = parts.surroundings.dialogs,
          .events = parts.surroundings.events,
          .links = parts.surroundings.links,
          .neighbours = *this,
          .ProcessInput =
              [this](const QString& target, const QString& text) {
                  return commands.ProcessInput(target, text);
              },
          .PlayWave = [this](const QString& name) { sounds.PlayWave(name); },
          .pictures = m_pictures,
      })
    , queries(queryFactory,
              {window.entry(u"mnu_pm_no"_s), window.entry(u"mnu_pm_yes"_s),
               window.entry(u"mnu_blocked"_s)},
              [this]() -> const ListBox& { return ignoreList->List1(); })
    , buddies({parts.handlers, connection, parts.surroundings.dialogs, parts.store, queries})
    , connection(
          {
              .variables = parts.variables,
              .login = parts.login,
              .channel = window,
              .buddies = buddies,
              .pages = *this,
              .popup = parts.popup,
              .debugWin = parts.debugWin,
              .program = parts.program,
              .dialogs = parts.surroundings.dialogs,
              .events = parts.surroundings.events,
              .writer = writer,
              .channels = channels,
              .queries = queries,
              .sock = sock,
              .ident = IDENT,
          },
          parts.handlers)
    , identifiers({parts.variables, channels, connection, parts.surroundings.clock,
                   parts.surroundings.random})
    , commands({parts.variables, identifiers, connection, channels, queries, buddies, status,
                writer, parts.surroundings.events})
    , roomText(IncomingText::room, writer, connection)
    , modeLine(parts.variables, channels)
    , nickEvents(channels, queries, writer)
    , ctcp({writer, roomText, connection, channels, queries})
    , identResponder({parts.variables, writer, window.DataIn(), parts.surroundings.events, IDENT},
                     parts.handlers)
    , nickForms({parts.variables, room, connection, commands, parts.login,
                 parts.surroundings.dialogs, *this, parts.handlers})
    , channelLists({parts.variables, connection, parts.surroundings.events, parts.handlers}, room)
    , interpreter({
          .variables = parts.variables,
          .login = parts.login,
          .channel = window,
          .prompts = nickForms,
          .buddies = buddies,
          .channelInfo = channelLists,
          .dialogs = parts.surroundings.dialogs,
          .events = parts.surroundings.events,
          .connection = connection,
          .channels = channels,
          .queries = queries,
          .writer = writer,
          .status = status,
          .modeLine = modeLine,
          .nickEvents = nickEvents,
          .roomText = roomText,
          .ctcp = ctcp,
          .commands = commands,
      })
    , topicField(room, connection)
    , inputLine(
          {parts.variables, ownStyle, room, window, connection, writer, parts.surroundings.dialogs})
    , nickActions({parts.variables,
                   room,
                   connection,
                   commands,
                   queries,
                   parts.surroundings.dialogs,
                   {window.entry(u"mnu_nicks_op"_s), window.entry(u"mnu_nicks_halfop"_s),
                    window.entry(u"mnu_nicks_voice"_s)},
                   [this]() -> ListBox& { return ignoreList->List1(); }})
    , presence({room, connection, commands, parts.surroundings.dialogs,
                window.entry(u"mnu_status_away"_s)})
    , options({window.entry(u"mnu_pm_no"_s), window.entry(u"mnu_pm_yes"_s),
               window.entry(u"mnu_sound_no"_s), window.entry(u"mnu_sound_yes"_s), window.DataIn(),
               writer, parts.surroundings.dialogs})
{
    sock.setLocalAddress(parts.surroundings.localAddress);
    IDENT.setLocalAddress(parts.surroundings.localAddress);
    IDENT.LocalPort = parts.surroundings.identPort;
    IDENT.RemotePort = parts.surroundings.identPort;
    connection.setInterpreter([this](const QString& line) { interpreter.interpret(line); });
    wireWindow();
    wireEntries();
    wirePalettes();
}

void ChatRoom::Form_Load()
{
    startSession(window, m_parts.login, m_parts.settings, m_parts.surroundings.events,
                 m_parts.variables, ownStyle);
}

void ChatRoom::wireWindow()
{
    const Handlers& handlers = m_parts.handlers;
    window.setKeyHooks({
        .topicKeyDown = [this](int keyCode) { return topicField.KeyDown(keyCode); },
        .topicKeyPress = [this](int character) { return topicField.KeyPress(character); },
        .inputKeyDown = [this](int keyCode) { return inputLine.KeyDown(keyCode); },
        .inputKeyPress = [this](int character) { return inputLine.KeyPress(character); },
    });
    connect(&window, &Channel::Check3_Click, this,
            [this](bool bold) { ownStyle.BoldPrefix = bold ? QString(strBold) : QString(); });
    connect(&window, &Channel::Check4_Click, this, [this](bool underline) {
        ownStyle.UnderlinePrefix = underline ? QString(strUnderline) : QString();
    });
    const auto page = [&](const QString& toolBar, WebTab* tab) {
        auto* widget = new QWidget;
        auto* layout = new QVBoxLayout(widget);
        auto* bar = new WebToolBar(handlers, *tab);
        bar->setObjectName(toolBar);
        layout->addWidget(bar);
        layout->addWidget(tab, 1);
        return widget;
    };
    window.setWebPages(page(u"ToolBar1"_s, m_home), page(u"Toolbar2"_s, m_misc));
    connect(&window, &Channel::closedToTray, this, [this] { m_parts.login.Show(); });
    handlers.connect(&window, &Channel::Label1_Click, this,
                     [this] { nickActions.click(u"mnu_ownaction"_s); });
    handlers.connect(&window, &Channel::lstNicks_DblClick, this,
                     [this] { nickActions.lstNicks_DblClick(); });
    handlers.connect(&window, &Channel::lstNicks_RightButtonDown, this, [this](const QPoint& at) {
        nickActions.lstNicks_MouseDown();
        window.menus().nicks()->popup(at);
    });
}

void ChatRoom::wireEntries()
{
    const auto onClick = [this](const QString& name, auto handler) {
        m_parts.handlers.connect(&window.entry(name), &QAction::triggered, this, handler);
    };
    const auto terminate = [this] { connection.mnu_terminate_Click(); };
    onClick(u"mnu_File_Connect"_s, [this] { connection.mnu_File_Connect_Click(); });
    onClick(u"mnu_File_Disconnect"_s, [this] { connection.mnu_File_Disconnect_Click(); });
    onClick(u"mnu_Terminate"_s, terminate);
    onClick(u"mnu_systray_exit"_s, terminate);
    onClick(u"mnu_register_nickname"_s, [this] { nickForms.mnu_register_nickname_Click(); });
    onClick(u"mnu_File_changenick"_s, [this] { nickForms.mnu_File_changenick_Click(); });
    onClick(u"mnu_File_changepass"_s, [this] { nickForms.mnu_File_changepass_Click(); });
    onClick(u"mnu_View_Buddylist"_s, [this] { buddies.Show(); });
    onClick(u"mnu_ingorelist"_s, [this] { ignoreList->Show(); });
    onClick(u"mnu_view_fontsize"_s, [this] { m_parts.smallForms.showFontOption(); });
    onClick(u"mnu_About"_s, [this] { m_parts.smallForms.showAbout(); });
    onClick(u"mnu_author"_s, [this] { m_parts.smallForms.showAuthor(); });
    onClick(u"mnu_systray_about"_s, [this] { m_parts.smallForms.showAbout(); });
    onClick(u"mnu_author_systray"_s, [this] { m_parts.smallForms.showAuthor(); });
    onClick(u"mnu_systray_hide"_s, [this] { m_parts.login.Show(); });
    onClick(u"mnu_Homepage"_s,
            [this] { m_parts.surroundings.links.OpenLink(web_addresses::home()); });
    onClick(u"mnu_chatroom"_s, [this] { window.Show(); });
    onClick(u"mnu_chan_ban"_s, [this] { channelLists.mnu_chan_ban_Click(); });

    const auto onTable = [&](auto& table) {
        for (const QString& name : table.entries())
            onClick(name, [&table, name] { table.click(name); });
    };
    onTable(nickActions);
    onTable(presence);
    onTable(options);
}

void ChatRoom::wirePalettes()
{
    const Handlers& handlers = m_parts.handlers;
    handlers.connect(&window, &Channel::check1_Click, this, [this] { m_smileys->Show(); });
    handlers.connect(&window, &Channel::check2_Click, this, [this] { showPalette(); });
    handlers.connect(&window, &Channel::Command3_Click, this, [this] { showFontOption(); });
    handlers.connect(&window, &Channel::command1_Click, this, [this] { showIgnoreList(); });
    handlers.connect(&window, &Channel::authorLinkClicked, this, [this] { showAuthor(); });
}

WebTab* ChatRoom::makeWebPage(const QString& name, const QString& address)
{
    auto* tab = new WebTab(m_parts.handlers, m_parts.surroundings.askWebEngine,
                           {.own = address, .search = web_addresses::search()});
    tab->setObjectName(name);
    return tab;
}

void ChatRoom::navigateHome(const QString& path)
{
    m_home->Navigate(web_addresses::onHost(path));
}

void ChatRoom::navigateMisc(const QString& path)
{
    m_misc->Navigate(web_addresses::onHost(path));
}

void ChatRoom::DoConnect(const QString& server)
{
    if (!m_parts.surroundings.dialogs.askYesNo(
            "Would you really like to connect to the server '"_L1 + server +
                "'? You will be disconnect from your current one"_L1,
            u"QuillHarborMessenger"_s))
        return;
    connection.mnu_File_Disconnect_Click();
    // The line goes nowhere: there is no connection that could take it.
    commands.ProcessInput({}, "server "_L1 + server);
}

void ChatRoom::selectcolor(const QString& code)
{
    ownStyle.TextColor = code;
    m_colors->hide();
    const std::optional<QRgb> value = inputColorOf(code);
    if (!value)
        throw RunTimeError(RunTimeError::Number::TypeMismatch);
    window.setInputColor(QColor::fromRgb(*value));
}
