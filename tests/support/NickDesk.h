#pragma once

#include "commands/CommandProcessor.h"
#include "common/SessionVariables.h"
#include "controls/ActionEntry.h"
#include "platform/Handlers.h"
#include "room/ChannelTable.h"
#include "support/QueryFakes.h"
#include "support/RecordingPorts.h"
#include "talk/QueryTable.h"
#include "text/MainView.h"
#include "text/StatusLine.h"
#include "text/TextWriter.h"

// A room, a command language and an ignore list that work, between a server, boxes and private
// windows that write down what is asked of them, in order and in one log.
class NickDesk final
{
public:
    QStringList log;
    SessionVariables variables;

    RoomWindow window;

    struct Link final : ServerLink
    {
        QStringList& log;
        int state = Winsock::Connected;

        explicit Link(QStringList& log)
            : log(log)
        {
        }
        void SendData(const QString& line) override { log += line; }
        int sockState() const override { return state; }
        QString remoteHost() const override { return {}; }
        int remotePort() const override { return 0; }
    } server{log};

    struct Boxes final : Dialogs
    {
        QStringList& log;
        QString reply;                     // what InputBox gives
        std::function<void()> whileOpen{}; // what happens behind a box

        explicit Boxes(QStringList& log)
            : log(log)
        {
        }
        void note(const QString& kind, const QString& text, const QString& title)
        {
            log += QString(kind + u'|' + title + u'|' + text);
            if (whileOpen)
                whileOpen();
        }
        void MsgBox(const QString& text, const QString& title, Icon) override
        {
            note(QStringLiteral("box"), text, title);
        }
        bool askYesNo(const QString& text, const QString& title) override
        {
            note(QStringLiteral("question"), text, title);
            return true;
        }
        QString InputBox(const QString& prompt, const QString& title) override
        {
            note(QStringLiteral("prompt"), prompt, title);
            return reply;
        }
        void Beep() override {}
    } dialogs{log};

    Journal unread;
    RecordingQueries privateWindows{unread};
    RecordingBuddies buddies{unread};

    // The menu entries whose state counts.
    ActionEntry mnu_pm_no, mnu_pm_yes, mnu_blocked;

    ListBoxWidget ignored{ListBoxWidget::Order::AsAdded};
    Room room{window};
    ChannelTable channels{room};
    QueryTable queries{privateWindows, {mnu_pm_no, mnu_pm_yes, mnu_blocked}, [this]() -> ListBox& {
                           return ignored;
                       }};
    TextWriter writer{variables};
    MainView mainView{writer, window.view};
    StatusLine status{mainView};
    QtEventLoop events;
    SystemClock clock;
    Identifiers identifiers{
        Identifiers::Parts{variables, channels, server, clock, [] { return 0.0; }}};
    CommandProcessor commands{CommandProcessor::Parts{variables, identifiers, server, channels,
                                                      queries, buddies, status, writer, events}};

    // A failure that no handler catches is written down like the rest.
    Handlers handlers{[this](const QString& message) { log += message; }};

    NickDesk()
    {
        variables.MyNick = QStringLiteral("me");
        channels.AddChannel(QStringLiteral("#room"));
    }

    // Members as the server names them; none is selected.
    void fill(const QStringList& names)
    {
        for (const QString& name : names)
            room.nicks.AddNick(name);
    }
    void select(const QString& row)
    {
        int index = window.nicks.ListCount() - 1;
        while (index >= 0 && window.nicks.List(index) != row)
            --index;
        window.nicks.setListIndex(index);
    }
    QStringList takeLog() { return std::exchange(log, {}); }
};
