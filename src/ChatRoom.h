#pragma once

#include "ChatRoomParts.h"
#include "MainRoom.h"
#include "Session.h"
#include "SmallWindows.h"
#include "desktop/SitePages.h"
#include "text/TalkLog.h"

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

    // Whatever is still to be written of the talk.
    void finishLog();

private:
    void wireKeys();
    void wireLock();
    void wireClicks();
    void wireEntries();
    void showConnected(bool connected);
    void startLog();
    QString placeOf(const RichTextBox& view) const;

    struct Click;
    struct Entry;
    static const Click clicks[];
    static const Entry entries[];

    const ChatRoomParts m_parts;
    std::unique_ptr<TalkLog> m_log; // none if nothing is to be kept

public:
    MainRoom main;
    SmallWindows windows;
    SitePages pages;
    Session session;
};
