#include "Messenger.h"

#include "common/TextHelpers.h"
#include "desktop/WebAddresses.h"
#include "session/SessionStart.h"
#include "text/Links.h"
#include "wire/HousePorts.h"

#include <QCoreApplication>
#include <QCursor>
#include <QEvent>

using namespace Qt::StringLiterals;

Messenger::Messenger(const Surroundings& surroundings)
    : m_surroundings(surroundings)
    , m_dialogs(surroundings.dialogs, [this] { return whileBoxIsOpen(); })
    , m_handlers([this](const QString& message) { fail(message); })
    , m_notices(surroundings.tell)
    , m_settings(surroundings.configFolder + "/settings.ini"_L1, m_notices)
    , m_store(surroundings.configFolder, m_notices)
    , m_password(m_store, surroundings.askKeyring)
    , m_runKey(surroundings.autostartFolder, m_notices)
    , m_previousInstance(surroundings.configFolder)
    , m_splash([] { return std::make_unique<frmSplash>(); })
    , m_debugWin([] { return std::make_unique<DebugWin>(); })
    , m_popupForm([this] {
        return std::make_unique<frmPopup>(m_handlers, m_surroundings.events,
                                          [this] { showChatRoom(); });
    })
    , m_popup(m_popupForm)
    , m_fontOption([this] { return std::make_unique<FontOption>(m_handlers, m_variables); })
    , m_about([] { return std::make_unique<About>(); })
    , m_author([this] {
        return std::make_unique<Author>(
            m_handlers, [this](const QString& address) { m_surroundings.links.OpenLink(address); });
    })
    , m_networkForm([this] {
        return std::make_unique<NetworkForm>(
            NetworkForm::Parts{m_handlers, m_settings, m_store, [this] { takeNetwork(); }});
    })
    , m_login({*this, m_settings, m_store, m_password, m_runKey, m_dialogs, surroundings.clock},
              m_handlers)
    , m_loginAsSource(m_login)
    , gSysTray(m_handlers, surroundings.notificationArea, m_dialogs)
    , m_trayMenu(
          m_handlers,
          {{"mnu_systray_hide"_L1, "&Show Main Window"_L1, [this] { m_login.Show(); }},
           {"mnu_chatroom"_L1, "&Show ChatRoom"_L1, [this] { showChatRoom(); }},
           {"mnu_systray_about"_L1, "&About Application/Software"_L1, [this] { showAbout(); }},
           {"mnu_author_systray"_L1, "&About Author/Creator"_L1, [this] { showAuthor(); }},
           {"mnu_systray_exit"_L1, "&Exit Application"_L1, [this] { exit(); }}})
{
    surroundings.notificationArea.setMenu(&m_trayMenu);
    m_handlers.connect(&gSysTray, &clsSysTray::LButtonDblClk, this, [this] { showChatRoom(); });
    m_handlers.connect(&gSysTray, &clsSysTray::RButtonUp, this, [this] { showTrayMenu(); });
    if (!surroundings.serverHost.isEmpty())
        m_settings.overrule(u"connect"_s, u"server"_s, surroundings.serverHost);
    if (!surroundings.room.isEmpty())
        m_settings.overrule(u"connect"_s, u"autojoin"_s, surroundings.room);
    QCoreApplication::instance()->installEventFilter(this);
}

Messenger::~Messenger() = default;

void Messenger::start()
{
    m_handlers.connect(&m_splash(), &frmSplash::finished, this, [this] { showLogin(); });
    m_splash->Show();
}

bool Messenger::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::Quit || watched != QCoreApplication::instance())
        return false;
    m_handlers.run([this] { exit(); });
    return true;
}

void Messenger::exit()
{
    if (m_chatRoom)
        m_chatRoom->session.connection.mnu_terminate_Click();
    else
        End(); // nothing of a session to end
}

void Messenger::showLogin()
{
    m_login.Form_Load();
    m_login.showNetwork(server(), false);
    m_splash.Unload();
    m_login.Show();
}

ChatRoom& Messenger::chatRoom()
{
    if (m_chatRoom)
        return *m_chatRoom;
    m_chatRoom = std::make_unique<ChatRoom>(ChatRoomParts{
        .surroundings = m_surroundings,
        .dialogs = m_dialogs,
        .handlers = m_handlers,
        .settings = m_settings,
        .variables = m_variables,
        .login = m_login,
        .store = m_store,
        .popup = m_popup,
        .debugWin = *this,
        .program = *this,
        .smallForms = *this,
        .notices = m_notices,
    });
    connect(&m_chatRoom->session.connection, &Connection::reported, &m_login, &Login::showReport);
    try {
        m_chatRoom->Form_Load();
    } catch (...) {
        m_chatRoom.reset(); // not loaded; the next touch tries again
        throw;
    }
    watchServer(m_chatRoom->session.sock);
    return *m_chatRoom;
}

void Messenger::watchServer(const Winsock& sock)
{
    m_handlers.connect(&sock, &Winsock::ErrorEvent, this,
                       [this, &sock] { m_login.showNetwork(sock.RemoteHost, true); });
    m_handlers.connect(&sock, &Winsock::ConnectEvent, this,
                       [this] { m_login.showNetwork(server(), false); });
}

void Messenger::takeNetwork()
{
    readNetwork(m_settings, m_variables);
    if (m_chatRoom)
        m_chatRoom->main.window.setPortText(QString::number(house_ports::first));
    m_login.showNetwork(server(), false);
}

QString Messenger::server() const
{
    return beforeNul(
        m_settings.ReadSetting(u"connect"_s, u"server"_s, QStringLiteral(QH_SERVER_HOST)));
}

void Messenger::createTrayIcon()
{
    gSysTray.setSourceWindow(&m_loginAsSource);
    gSysTray.ChangeIcon(m_debugWin->windowIcon());
    gSysTray.IconInSysTray();
    gSysTray.setToolTip(u"QuillHarbor Messenger V. 1.0"_s);
}

bool Messenger::canHideSignIn() const
{
    return m_surroundings.notificationArea.isAvailable() ||
           (m_chatRoom && m_chatRoom->main.window.isVisible());
}

void Messenger::showTrayMenu()
{
    if (!m_trayMenu.isVisible()) // the desktop may have shown it already
        m_trayMenu.popup(QCursor::pos());
}

void Messenger::openFeedbackPage()
{
    m_surroundings.links.OpenLink(web_addresses::feedback());
}

void Messenger::unloadSmallForms()
{
    m_debugWin.Unload();
    m_chatRoom->windows.nickForms.unloadRegister();
    m_chatRoom->windows.palettes.unloadSmileys();
    m_chatRoom->windows.nickForms.unloadChange();
    m_chatRoom->windows.nickForms.unloadUseNick();
    m_author.Unload();
    m_about.Unload();
}

// A box keeps the handler below it from ending, and the server waits for no user.
std::shared_ptr<void> Messenger::whileBoxIsOpen()
{
    return m_chatRoom ? std::make_shared<TcpWinsock::LetThrough>(m_chatRoom->session.sock)
                      : nullptr;
}

void Messenger::fail(const QString& message)
{
    m_dialogs.MsgBox(message, u"Quill Harbor Messenger"_s, Dialogs::Icon::Critical);
    End();
}

void Messenger::End()
{
    if (m_chatRoom)
        m_chatRoom->finishLog();
    m_password.settle();
    m_surroundings.end();
}
