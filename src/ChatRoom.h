#pragma once

#include "account/NickForms.h"
#include "commands/ChatOptions.h"
#include "commands/CommandProcessor.h"
#include "commands/Identifiers.h"
#include "commands/InputLine.h"
#include "commands/NickActions.h"
#include "commands/Presence.h"
#include "contacts/BuddyList.h"
#include "contacts/IgnoreList.h"
#include "desktop/Channel.h"
#include "desktop/Sounds.h"
#include "desktop/WebTab.h"
#include "room/ChannelLists.h"
#include "room/ChannelTable.h"
#include "room/ModeLine.h"
#include "room/TopicField.h"
#include "session/Connection.h"
#include "session/Ctcp.h"
#include "session/IdentResponder.h"
#include "session/Interpreter.h"
#include "session/NickEvents.h"
#include "talk/Query.h"
#include "talk/QueryTable.h"
#include "text/IncomingText.h"
#include "text/OwnTextStyle.h"
#include "text/StatusLine.h"
#include "text/TextWriter.h"
#include "text/frmSmileys.h"
#include "text/frmcolor.h"
#include "wire/TcpWinsock.h"

class UserStore;
class Handlers;
class Settings;
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

// The main window with all that lives as long as it: the session, the room, the input. Made at
// the first touch of the main window.
class ChatRoom final : public QObject,
                       private NickFormHost,
                       private QueryNeighbours,
                       private WebPages
{
    Q_OBJECT
public:
    struct Parts
    {
        const Surroundings& surroundings;
        const Handlers& handlers;
        const Settings& settings;
        SessionVariables& variables;
        SignInForm& login;
        const UserStore& store;
        Popup& popup;
        TrafficLog& debugWin;
        Program& program;
        SmallForms& smallForms;
    };

    explicit ChatRoom(const Parts& parts);

    // Reads the session's settings; raises what they raise.
    void Form_Load();

    // Leaves this server for another, if the user agrees. Nothing in the menus asks for it.
    void DoConnect(const QString& server);

    // The colour of the user's own text, by its code. An unknown one raises TypeMismatch (13).
    void selectcolor(const QString& code);
    void unloadSmileys() { m_smileys.Unload(); }

private:
    void wireWindow();
    void wireEntries();
    void wirePalettes();
    WebTab* makeWebPage(const QString& name, const QString& address);

    // WebPages
    void navigateHome(const QString& path) override;
    void navigateMisc(const QString& path) override;

    // QueryNeighbours
    QRgb inputColor() const override { return window.inputColor().rgb(); }
    void showAuthor() override { m_parts.smallForms.showAuthor(); }
    void showIgnoreList() override { ignoreList->Show(); }
    void showFontOption() override { m_parts.smallForms.showFontOption(); }
    void showPalette() override { m_colors->Show(); }
    void showBuddyList() override { buddies.Show(); }

    // NickFormHost
    void setChannelEnabled(bool enabled) override { window.setEnabled(enabled); }
    void FlashWindow(QWidget& form) override { ::FlashWindow(form); }

    Parts m_parts;
    FormSlot<frmSmileys> m_smileys;
    FormSlot<frmcolor> m_colors;
    std::shared_ptr<PictureCache> m_pictures;
    WebTab* m_home;
    WebTab* m_misc;

public:
    Channel window;
    TcpWinsock sock;
    TcpWinsock IDENT;
    Room room;
    ChannelTable channels;
    TextWriter writer;
    StatusLine status;
    OwnTextStyle ownStyle;
    Sounds sounds;
    FormSlot<IgnoreList> ignoreList; // hides itself and is never unloaded
    QueryFactory queryFactory;
    QueryTable queries;
    Buddies buddies;
    Connection connection;
    Identifiers identifiers;
    CommandProcessor commands;
    IncomingText roomText;
    ModeLine modeLine;
    NickEvents nickEvents;
    Ctcp ctcp;
    IdentResponder identResponder;
    NickForms nickForms;
    ChannelLists channelLists;
    Interpreter interpreter;
    TopicField topicField;
    InputLine inputLine;
    NickActions nickActions;
    Presence presence;
    ChatOptions options;
};
