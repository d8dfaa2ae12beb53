#pragma once

#include "ChatRoomParts.h"
#include "MainRoom.h"
#include "Session.h"
#include "SmallWindows.h"
#include "desktop/SitePages.h"

#include <QObject>

// The main window with all that lives as long as it: the room, the windows beside it, the
// session. Made at the first touch of the main window.
class ChatRoom final : public QObject
{
    Q_OBJECT
public:
    explicit ChatRoom(const ChatRoomParts& parts);

    // Reads the session's settings; raises what they raise.
    void Form_Load();

private:
    void wireKeys();
    void wireClicks();
    void wireEntries();
    void showConnected(bool connected);

    struct Click;
    struct Entry;
    static const Click clicks[];
    static const Entry entries[];

    const ChatRoomParts m_parts;

public:
    MainRoom main;
    SmallWindows windows;
    SitePages pages;
    Session session;
};
