#include "Messenger.h"

using namespace Qt::StringLiterals;

Messenger::Messenger(const Surroundings& surroundings)
    : m_surroundings(surroundings)
    , m_handlers([this](const QString& message) { fail(message); })
    , m_settings(surroundings.configFolder + "/settings.ini"_L1)
    , m_store(surroundings.configFolder)
    , m_runKey(surroundings.autostartFolder)
    , m_previousInstance(surroundings.configFolder)
    , m_splash([] { return std::make_unique<frmSplash>(); })
    , m_debugWin([] { return std::make_unique<DebugWin>(); })
    , m_login({*this, m_settings, m_store, m_runKey, surroundings.dialogs, surroundings.clock},
              m_handlers)
{
    if (!surroundings.serverHost.isEmpty())
        m_settings.overrule(u"connect"_s, u"server"_s, surroundings.serverHost);
}

Messenger::~Messenger() = default;

void Messenger::start()
{
    m_handlers.connect(&m_splash(), &frmSplash::finished, this, [this] { showLogin(); });
    m_splash->Show();
}

void Messenger::showLogin()
{
    m_login.Form_Load();
    m_splash.Unload();
    m_login.Show();
}

ChatRoom& Messenger::chatRoom()
{
    if (m_chatRoom)
        return *m_chatRoom;
    m_chatRoom = std::make_unique<ChatRoom>(ChatRoom::Parts{
        .surroundings = m_surroundings,
        .handlers = m_handlers,
        .settings = m_settings,
        .variables = m_variables,
        .login = m_login,
        .store = m_store,
        .pages = m_pending,
        .popup = m_pending,
        .debugWin = *this,
        .program = *this,
        .smallForms = *this,
    });
    try {
        m_chatRoom->Form_Load();
    } catch (...) {
        m_chatRoom.reset(); // not loaded; the next touch tries again
        throw;
    }
    return *m_chatRoom;
}

void Messenger::createTrayIcon() {}
void Messenger::showPopup() {}
void Messenger::showAbout() {}
void Messenger::showAuthor() {}
void Messenger::showFontOption() {}
void Messenger::openFeedbackPage() {}
void Messenger::unloadSmallForms()
{
    m_debugWin.Unload();
}

void Messenger::fail(const QString& message)
{
    m_surroundings.dialogs.MsgBox(message, u"Quill Harbor Messenger"_s, Dialogs::Icon::Critical);
    End();
}

void Messenger::End()
{
    m_surroundings.end();
}
