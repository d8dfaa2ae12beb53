#pragma once

class CommandProcessor;
class Dialogs;
class Handlers;
class QString;
class QWidget;
class ServerLink;
class SignInForm;
struct Room;
struct SessionVariables;

// What the forms around the own nick ask of the main window and of the desktop.
class NickFormHost
{
public:
    virtual ~NickFormHost() = default;

    virtual void setChannelEnabled(bool enabled) = 0;
    virtual void FlashWindow(QWidget& window) = 0;
};

// Everything that these forms act on.
struct NickFormDesk
{
    SessionVariables& variables;
    const Room& room;
    ServerLink& server;
    CommandProcessor& commands;
    SignInForm& login;
    Dialogs& dialogs;
    NickFormHost& host;
    const Handlers& handlers;
};

// Asks the server for another nick. It counts as the own nick and stands in the sign-in form
// before the server has answered.
void takeNick(const NickFormDesk& desk, const QString& nick);

// The main window takes no input while at least one of its holders stands.
class ChannelHold final
{
public:
    explicit ChannelHold(NickFormHost& host)
        : m_host(host)
    {
    }

    void take()
    {
        if (++m_holders == 1)
            m_host.setChannelEnabled(false);
    }
    void release()
    {
        if (--m_holders == 0)
            m_host.setChannelEnabled(true);
    }

private:
    NickFormHost& m_host;
    int m_holders = 0;
};
