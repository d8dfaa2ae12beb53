#include "session/Connection.h"

#include "common/ControlCharacters.h"
#include "common/Conversions.h"
#include "common/OneLine.h"
#include "common/SessionVariables.h"
#include "common/TextHelpers.h"
#include "contacts/ContactList.h"
#include "controls/ListBox.h"
#include "platform/EventLoop.h"
#include "platform/Handlers.h"
#include "room/ChannelTable.h"
#include "talk/QueryTable.h"
#include "text/MainView.h"
#include "wire/HousePorts.h"
#include "wire/Winsock.h"

#include <algorithm>

namespace {

using namespace Qt::StringLiterals;

constexpr auto serverName = "Quill Harbor Server"_L1;
constexpr auto captionConnect = "&Connect"_L1;
constexpr auto captionCancel = "&Cancel"_L1;
constexpr int retryMilliseconds = 20000;
constexpr int yieldsBeforeEnd = 16;

// A server that ends the connection before its first word is none for lines of this kind.
QString silentEnd(const ServerAddress& address)
{
    const QString ended = address.shownHost + " ended the connection without a word."_L1;
    return address.tls ? ended
                       : ended + " It may take TLS only: the address is ircs://"_L1 +
                             address.shownHost + u':' + QString::number(address.port) + " then."_L1;
}

} // namespace

Connection::Connection(const Parts& parts, const Handlers& handlers)
    : m_parts(parts)
    , m_standardLines(standardWays())
{
    m_clock.start();
    m_wrongAddress.setSingleShot(true);
    handlers.connect(&m_wrongAddress, &QTimer::timeout, this,
                     [this] { skipRest([this] { sock_Error(m_address.error); }); });
    Timer1.setInterval(retryMilliseconds);
    handlers.connect(&Timer1, &QTimer::timeout, this, [this] { Timer1_Timer(); });
    Winsock* sock = &m_parts.sock;
    handlers.connect(sock, &Winsock::ConnectEvent, this,
                     [this] { skipRest([this] { sock_Connect(); }); });
    handlers.connect(sock, &Winsock::CloseEvent, this,
                     [this] { skipRest([this] { sock_Close(); }); });
    handlers.connect(sock, &Winsock::ErrorEvent, this, [this](int, const QString& description) {
        skipRest([&] { sock_Error(description); });
    });
    handlers.connect(sock, &Winsock::DataArrival, this, [this] { sock_DataArrival(); });
}

void Connection::stopRetrying()
{
    if (!Timer1.isActive())
        return;
    Timer1.stop();
    SessionReport last = m_lastReport;
    last.nextTry = QDeadlineTimer(QDeadlineTimer::Forever);
    report(last);
}

void Connection::report(SessionReport report)
{
    report.server =
        m_address.isValid() ? m_address.shownHost : beforeNul(m_parts.variables.ServerHost);
    m_lastReport = report;
    Q_EMIT reported(report);
}

void Connection::SendData(const QString& line)
{
    if (m_parts.sock.state() == Winsock::Closed)
        return;
    // A line end inside it came from the other side and would begin a command of its own.
    const QString sent = oneLine(line);
    if (m_address.isStandard())
        m_standardLines.send(sent);
    else
        m_parts.sock.SendData(m_charset.encode(sent) + '\n');
    if (m_parts.debugWin.Visible())
        m_parts.debugWin.sent(sent);
}

int Connection::sockState() const
{
    return m_parts.sock.state();
}

QString Connection::remoteHost() const
{
    return m_parts.sock.RemoteHost;
}

int Connection::remotePort() const
{
    return m_parts.sock.RemotePort;
}

void Connection::mnu_File_Connect_Click()
{
    const QString caption = m_parts.channel.mnu_File_Connect().Caption();
    if (caption == captionConnect)
        startAttempt();
    else if (caption == captionCancel)
        cancelAttempt();
    m_parts.channels.main().nicks.showChatterCount();
}

void Connection::startAttempt()
{
    ++m_attempts;
    Timer1.stop();
    closeLine();
    m_parts.channel.mnu_File_Connect().setCaption(captionCancel);
    m_charset = Charset::named(beforeNul(m_parts.variables.Charset));
    m_address = ServerAddress::parse(beforeNul(m_parts.variables.ServerHost));
    m_parts.sock.RemoteHost = m_address.host;
    m_parts.sock.RemotePort =
        m_address.isStandard() ? m_address.port : toInt32(m_parts.channel.portText());
    m_parts.sock.Tls = m_address.tls;
    m_parts.sock.AuthoritiesFile = beforeNul(m_parts.variables.AuthoritiesFile);
    m_parts.ident.Close();
    m_parts.ident.Listen(); // somebody else may have the port: that is no failure
    m_parts.mainView.write(strColor % "02Connecting to "_L1 % strBold % serverName % strBold %
                           " port "_L1 % strBold % QString::number(m_parts.sock.RemotePort));
    connectOrTell();
    m_parts.login.setSignCaption(u"Sign Out"_s);
    m_parts.login.setEntriesLocked(true);
    report({.event = SessionReport::Event::Connecting});
}

void Connection::connectOrTell()
{
    if (m_address.isValid())
        m_parts.sock.Connect();
    else
        m_wrongAddress.start(0);
}

void Connection::closeLine()
{
    m_wrongAddress.stop();
    m_standardLines.end();
    m_parts.sock.Close();
}

StandardLines::Ways Connection::standardWays()
{
    return {
        .write = [this](const QByteArray& bytes) { m_parts.sock.SendData(bytes); },
        .now = [this] { return m_clock.elapsed(); },
        .tell =
            [this](const QString& text, bool good) {
                skipRest([&] {
                    m_parts.mainView.write(strColor % (good ? "03* "_L1 : "04* "_L1) % text);
                });
            },
        .warn = [this](const QString& text) { skipRest([&] { warn(text); }); },
        .keep =
            [this](const QString& text) {
                if (m_keep)
                    skipRest([&] { m_keep(text); });
            },
    };
}

// Seen whatever window is open.
void Connection::warn(const QString& text) const
{
    m_parts.mainView.write(strColor % "04ERROR : "_L1 % text);
    m_parts.popup.Show();
    m_parts.popup.setBody(text);
}

void Connection::cancelAttempt()
{
    Timer1.stop();
    showSignedOut();
    closeLine();
    m_parts.ident.Close();
    m_parts.channel.setPortText(QString::number(house_ports::first));
    m_parts.channel.mnu_File_Connect().setCaption(captionConnect);
    m_parts.mainView.write(strColor % "05Connection attempt cancelled"_L1);
    m_parts.login.setEntriesLocked(false);
    report({.event = SessionReport::Event::Cancelled});
}

void Connection::mnu_File_Disconnect_Click()
{
    SendData("QUIT :"_L1 + m_parts.variables.QuitMsg);
    enableConnecting();
    m_parts.mainView.write(strColor % "05You are Disconnected from "_L1 % serverName);
    Room& room = m_parts.channels.main();
    closeLine();
    room.modes.ClearModes();
    room.modes.Update();
    m_parts.channel.lstNicks().Clear();
    m_parts.channel.setPortText(QString::number(house_ports::first));
    room.nicks.showNoChatters();
    room.nicks.clearChatterCount();
    m_parts.login.Login_UnLog();
    showSignedOut();
    m_parts.login.setEntriesLocked(false);
    report({.event = SessionReport::Event::SignedOut});
}

void Connection::mnu_terminate_Click()
{
    SendData("QUIT :"_L1 + m_parts.variables.QuitMsg);
    m_parts.ident.Close();
    closeLine();
    m_parts.program.unloadSmallForms();
    m_parts.queries.unloadOpen();
    for (int i = 0; i < yieldsBeforeEnd; ++i)
        m_parts.events.DoEvents();
    m_parts.program.End();
}

void Connection::closeSock()
{
    closeLine();
}

void Connection::closeIdent()
{
    m_parts.ident.Close();
}

void Connection::enableConnecting()
{
    m_parts.channel.mnu_File_Connect().setEnabled(true);
    m_parts.channel.mnu_File_Connect().setCaption(captionConnect);
    m_parts.channel.mnu_File_Disconnect().setEnabled(false);
}

void Connection::showSignedOut()
{
    m_parts.login.cmdSignout_Click();
    m_parts.login.setSignCaption(u"Sign In"_s);
}

void Connection::sock_Connect()
{
    m_parts.channel.lstNicks().Clear();
    m_parts.queries.unloadAll();
    m_parts.channel.mnu_File_Connect().setEnabled(false);
    m_parts.channel.mnu_File_Disconnect().setEnabled(true);
    m_parts.channel.mnu_File_Connect().setCaption(captionConnect);
    m_parts.mainView.write(strColor % "03Attempting To Connect "_L1 % serverName);
    if (m_address.isStandard()) {
        ReceiveBuffer.clear(); // what another server did not end would spoil the first line
        m_standardLines.begin(
            {m_parts.login.nickname(), m_address.tls ? m_parts.login.accountPassword() : QString()},
            m_charset);
    }
    SendData("NICK "_L1 + m_parts.login.nickname());
    // Only the blanks of the full name part what follows: its words are the line's last fields.
    SendData("USER "_L1 + m_parts.channel.computerName() + "Client-User"_L1 + ":"_L1 +
             m_parts.variables.FullName);
    m_parts.channels.main().modes.Update();
    m_parts.login.Login_Log();
    m_farewell.clear();
    report({.event = SessionReport::Event::Connected});
    m_parts.events.Pause(0.5);
    m_parts.pages.navigateHome(u"/quillharbor"_s);
    m_parts.events.Pause(0.5);
    m_parts.pages.navigateMisc(u"/quillmisc"_s);
    Timer1.stop();
}

void Connection::sock_Close()
{
    if (m_address.isStandard() && !m_standardLines.hasHeard())
        return sock_Error(silentEnd(m_address));
    Room& room = m_parts.channels.main();
    m_parts.mainView.write(strColor % "02Disconnected by SERVER from "_L1 %
                           m_parts.variables.ServerHost);
    closeLine();
    room.modes.ClearModes();
    m_parts.ident.Close();
    m_parts.channel.lstNicks().Clear();
    room.nicks.clearChatterCount();
    room.nicks.showNoChatters();
    enableConnecting();
    room.modes.Update();
    m_parts.buddies.clearOnline();
    showSignedOut();
    m_parts.login.Login_UnLog();
    report({.event = SessionReport::Event::ServerClosed, .reason = m_farewell});
}

void Connection::sock_Error(const QString& description)
{
    m_standardLines.end();
    Room& room = m_parts.channels.main();
    m_parts.channel.mnu_File_Connect().setEnabled(true);
    m_parts.channel.mnu_File_Disconnect().setEnabled(false);
    m_parts.channel.mnu_File_Connect().setCaption(captionConnect);
    m_parts.mainView.write(strColor % "04ERROR : "_L1 % description);
    m_parts.channel.lstNicks().Clear();
    room.nicks.clearChatterCount();
    room.nicks.showNoChatters();
    m_parts.channel.setPortText(QString::number(house_ports::fallback));
    showSignedOut();
    m_parts.login.Login_UnLog();
    m_parts.popup.Show();
    m_parts.popup.setBody(description);
    m_parts.login.setEntriesLocked(false);
    if (m_parts.variables.Reconnect)
        Timer1.start();
    report({.event = SessionReport::Event::Failed,
            .reason = description,
            .nextTry = Timer1.isActive() ? QDeadlineTimer(Timer1.remainingTime())
                                         : QDeadlineTimer(QDeadlineTimer::Forever)});
}

void Connection::sock_DataArrival()
{
    if (m_parts.sock.state() == Winsock::Closed)
        return;
    const QByteArray data = m_parts.sock.GetData();
    if (m_parts.debugWin.Visible())
        m_parts.debugWin.received(m_charset.decode(data));
    ReceiveBuffer += data;
    // It is the end of the buffer that frames: complete lines wait with an incomplete last one.
    if (!ReceiveBuffer.endsWith('\r') && !ReceiveBuffer.endsWith('\n'))
        return;
    const QStringList lines = m_charset.linesOf(std::exchange(ReceiveBuffer, QByteArray()));
    const int attempt = m_attempts;
    m_pauseLeft = longestPause;
    for (const QString& line : lines) {
        if (m_attempts != attempt)
            return; // these are of a connection that another one has replaced
        const std::optional<QString> heard =
            m_address.isStandard() ? m_standardLines.receive(line) : line;
        if (heard && m_interpret)
            skipRest([&] { m_interpret(*heard); });
    }
}

void Connection::pause(double seconds)
{
    const double wait = std::min(seconds, m_pauseLeft);
    m_pauseLeft -= wait;
    m_parts.events.Pause(wait);
}

void Connection::Timer1_Timer()
{
    mnu_File_Connect_Click();
}
