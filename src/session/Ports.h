#pragma once

#include "controls/MenuEntry.h"
#include "room/RoomForm.h"

#include <QString>

// What the session asks of the windows, one class for each role.

// The sign-in form.
class SignInForm
{
public:
    virtual ~SignInForm() = default;

    virtual QString nickname() const = 0; // Text1
    virtual void setNickname(const QString& nick) = 0;
    virtual QString sessionPassword() const = 0;             // Text3
    virtual QString accountPassword() const = 0;             // of the nick now, wherever it stands
    virtual void setEntriesLocked(bool locked) = 0;          // Text1 and Text2
    virtual void setSignCaption(const QString& caption) = 0; // mnu_Sign
    virtual void cmdSignout_Click() = 0;                     // the look alone, not the connection
    virtual void Login_Log() = 0;
    virtual void Login_UnLog() = 0;
    virtual void Show() = 0;
    virtual void Hide() = 0;
};

// The main window. The captions and enabled flags of its two connection entries are the state of
// the session.
class MainForm : public RoomForm
{
public:
    virtual MenuEntry& mnu_File_Connect() = 0;
    virtual MenuEntry& mnu_File_Disconnect() = 0;
    virtual QString portText() const = 0; // Text1
    virtual void setPortText(const QString& port) = 0;
    virtual QString computerName() const = 0; // Label7
    virtual void setComputerName(const QString& name) = 0;
    virtual void Show() = 0;
    virtual void Hide() = 0;
};

// The boxes that ask for a nick or its password.
class NickPrompts
{
public:
    virtual ~NickPrompts() = default;

    virtual void showPassword() = 0; // frmPassword
    virtual void unloadPassword() = 0;
    virtual void showUseNick() = 0; // usenick
};

// The two tabs with web pages; the path is one of the network's own site.
class WebPages
{
public:
    virtual ~WebPages() = default;

    virtual void navigateHome(const QString& path) = 0;
    virtual void navigateMisc(const QString& path) = 0;
};

// The box that slides in at the corner of the screen.
class Popup
{
public:
    virtual ~Popup() = default;

    virtual void Show() = 0;
    virtual void setBody(const QString& text) = 0;
};

// The raw lines, both ways. Nobody writes into it while nobody can see it.
class TrafficLog
{
public:
    virtual ~TrafficLog() = default;

    virtual bool Visible() const = 0;
    virtual void received(const QString& data) = 0;
    virtual void sent(const QString& line) = 0;
};

// The program around the session, for its end.
class Program
{
public:
    virtual ~Program() = default;

    // All but the conversations, the buddy list and the two main windows, in a fixed order.
    virtual void unloadSmallForms() = 0;
    virtual void End() = 0; // at once
};
