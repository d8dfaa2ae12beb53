#pragma once

#include "session/Ports.h"
#include "session/SessionReport.h"
#include "wire/Charset.h"
#include "wire/LineSink.h"
#include "wire/ServerAddress.h"
#include "wire/StandardLines.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <functional>
#include <utility>

class ChannelTable;
class ContactList;
class Dialogs;
class EventLoop;
class Handlers;
class MainView;
class QueryTable;
class Winsock;
struct SessionVariables;

// Opens, closes and retries the connection to the server, and takes lines in and out. How far it
// has got is nowhere written down but on the screen: in the captions and enabled flags of the two
// connection entries. The retry timer and the socket tell the rest.
class Connection final : public QObject, public ServerLink
{
    Q_OBJECT
public:
    struct Parts
    {
        const SessionVariables& variables;
        SignInForm& login;
        MainForm& channel;
        ContactList& buddies;
        WebPages& pages;
        Popup& popup;
        TrafficLog& debugWin;
        Program& program;
        Dialogs& dialogs;
        EventLoop& events;
        const MainView& mainView;
        ChannelTable& channels;
        QueryTable& queries;
        Winsock& sock;
        Winsock& ident;
    };
    using Interpret = std::function<void(const QString& line)>;

    Connection(const Parts& parts, const Handlers& handlers);

    // Whoever handles the lines; without one they are dropped.
    void setInterpreter(Interpret interpret) { m_interpret = std::move(interpret); }
    // Whoever keeps typed text that no line could take, for the person to have it back.
    using Keep = std::function<void(const QString& text)>;
    void setKeeper(Keep keep) { m_keep = std::move(keep); }
    void setRetryInterval(int milliseconds) { Timer1.setInterval(milliseconds); }

    void SendData(const QString& line) override;
    int sockState() const override;
    QString remoteHost() const override;
    int remotePort() const override;

    // Connects, or gives up the attempt that is under way: the entry's caption decides.
    void mnu_File_Connect_Click();
    void mnu_File_Disconnect_Click();
    void mnu_terminate_Click();

    void stopRetrying();
    bool isWaitingToRetry() const { return Timer1.isActive(); }

    // What the dispatcher needs when the session ends by a line of the server.
    void closeSock();
    void closeIdent();
    void enableConnecting();
    Winsock& sock() const { return m_parts.sock; }

    // What a line that is handled has to wait. All lines of one arrival together wait for 0.6
    // seconds at most: a flood of them must not keep the server's PING waiting.
    void pause(double seconds);

    // Tells the windows; the connection adds the server to it.
    void report(SessionReport report);
    // Why the server is about to close the connection, as it says itself.
    void setFarewell(const QString& reason) { m_farewell = reason; }

Q_SIGNALS:
    void reported(const SessionReport& report);

private:
    static constexpr double longestPause = 0.6; // seconds

    void startAttempt();
    void connectOrTell();
    void closeLine();
    StandardLines::Ways standardWays();
    void warn(const QString& text) const;
    void cancelAttempt();
    void showSignedOut();

    void sock_Connect();
    void sock_Close();
    void sock_Error(const QString& description);
    void sock_DataArrival();
    void Timer1_Timer();

    Parts m_parts;
    Interpret m_interpret;
    Keep m_keep;
    QTimer Timer1;
    QTimer m_wrongAddress; // tells of it when the click that asked for it is done
    QElapsedTimer m_clock;
    Charset m_charset;
    ServerAddress m_address;
    StandardLines m_standardLines; // between here and a network of today, nowhere else
    QByteArray ReceiveBuffer;      // survives the connection
    int m_attempts = 0;            // to connect
    double m_pauseLeft = longestPause;
    QString m_farewell;
    SessionReport m_lastReport;
};
