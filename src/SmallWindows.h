#pragma once

#include "ChatRoomParts.h"
#include "account/NickForms.h"
#include "contacts/BuddyList.h"
#include "contacts/IgnoreList.h"
#include "room/ChannelLists.h"
#include "talk/Query.h"
#include "talk/QueryTable.h"
#include "text/Palettes.h"

class Channel;
struct MainRoom;
struct Session;

// The windows beside the main window, and what each of them asks of the others.
struct SmallWindows final : private QueryNeighbours, private NickFormHost
{
    // The session need not stand yet: here it is only remembered.
    SmallWindows(const ChatRoomParts& given, MainRoom& main, Session& session);

private:
    Query::Desk queryDesk(MainRoom& main, Session& session);

    // QueryNeighbours
    QRgb inputColor() const override;
    void showAuthor() override { m_given.smallForms.showAuthor(); }
    void showIgnoreList() override { ignoreList->Show(); }
    void showFontOption() override { m_given.smallForms.showFontOption(); }
    void showPalette() override { palettes.showColors(); }
    void showBuddyList() override { buddies.Show(); }

    // NickFormHost
    void setChannelEnabled(bool enabled) override;
    void FlashWindow(QWidget& form) override { ::FlashWindow(form); }

    const ChatRoomParts& m_given;
    Channel& m_window;

public:
    Palettes palettes;
    FormSlot<IgnoreList> ignoreList; // hides itself and is never unloaded
    QueryFactory queryFactory;
    QueryTable queries;
    Buddies buddies;
    NickForms nickForms;
    ChannelLists channelLists;
};
