#pragma once

#include <QPoint>
#include <QString>

// What the sign-in form asks of the rest of the program. The first touch of the main window loads
// it, which can raise a run-time failure.
class LoginDesk
{
public:
    virtual ~LoginDesk() = default;

    virtual void stopRetrying() = 0; // no attempt follows by itself
    virtual void loadChannel() = 0;
    virtual void mnu_File_Connect_Click() = 0;
    virtual void mnu_File_Disconnect_Click() = 0;
    virtual void showChatRoom() = 0;
    virtual void createTrayIcon() = 0;
    virtual bool canHideSignIn() const = 0; // there is another way back to it
    virtual void showPopup() = 0;           // with its own text
    virtual void showAbout() = 0;
    virtual void showAuthor() = 0;
    virtual void openFeedbackPage() = 0;
    virtual void chooseNetwork() = 0;
    virtual bool hasPreviousInstance() const = 0;
    virtual void End() = 0;
};
