#pragma once

#include "settings/Notices.h"

class Dialogs;
class Handlers;
class Popup;
class Program;
class Settings;
class SignInForm;
class TrafficLog;
class UserStore;
struct SessionVariables;
struct Surroundings;

// The windows that belong to the program and not to the room.
class SmallForms
{
public:
    virtual ~SmallForms() = default;

    virtual void showAbout() = 0;
    virtual void showAuthor() = 0;
    virtual void showFontOption() = 0;
};

// What the program gives the main window and all that lives as long as it.
struct ChatRoomParts
{
    const Surroundings& surroundings;
    Dialogs& dialogs; // those of the surroundings, watched
    const Handlers& handlers;
    const Settings& settings;
    SessionVariables& variables;
    SignInForm& login;
    const UserStore& store;
    Popup& popup;
    TrafficLog& debugWin;
    Program& program;
    SmallForms& smallForms;
    Notices notices;
};
