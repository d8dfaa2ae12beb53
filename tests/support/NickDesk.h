#pragma once

#include "channel/ChannelTable.h"
#include "common/SessionVariables.h"
#include "input/CommandProcessor.h"
#include "platform/ActionEntry.h"
#include "platform/Dialogs.h"
#include "platform/EventLoop.h"
#include "platform/Handlers.h"
#include "platform/ListBox.h"
#include "platform/Winsock.h"
#include "query/QueryTable.h"
#include "render/StatusLine.h"
#include "render/TextWriter.h"
#include "session/LineSink.h"
#include "session/Ports.h"
#include "support/MemoryView.h"

#include <QStringList>

#include <list>

class MemoryListBox final : public ListBox
{
public:
    QStringList rows;
    int selected = -1;
    bool enabled = true;

    void AddItem(const QString& text) override { rows += text; }
    void RemoveItem(int index) override { rows.removeAt(index); }
    void Clear() override { rows.clear(); }
    int ListCount() const override { return static_cast<int>(rows.size()); }
    QString List(int index) const override { return rows.value(index); }
    void setList(int index, const QString& text) override { rows[index] = text; }
    int ListIndex() const override { return selected; }
    void setListIndex(int index) override { selected = index; }
    void setEnabled(bool on) override { enabled = on; }
};

// A room, a command language and an ignore list that work, between a server, boxes and private
// windows that write down what is asked of them, in order and in one log.
class NickDesk final
{
public:
    QStringList log;
    SessionVariables variables;

    struct Window final : RoomForm
    {
        MemoryView view;
        MemoryView topic;
        MemoryListBox list;

        RichTextBox& DataIn() override { return view; }
        RichTextBox& rtbTopic() override { return topic; }
        ListBox& lstNicks() override { return list; }
        void setCmdCount(const QString&) override {}
        void setVisible(bool) override {}
    } window;

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

    struct PrivateTalk final : PrivateWindow
    {
        MemoryView view;

        RichTextBox& DataIn() override { return view; }
        void setCaption(const QString&) override {}
        void setNickLabel(const QString&) override {}
        void setHostLabel(const QString&) override {}
        void setVisible(bool) override {}
        void setTag(const QString&) override {}
        void SetFocus() override {}
        void PutText(const QString&, const QString&) override {}
        void Unload() override {}
    };
    struct Factory final : PrivateWindowFactory
    {
        std::list<PrivateTalk> windows;
        PrivateWindow& create() override { return windows.emplace_back(); }
    } privateWindows;

    struct NoBuddies final : ContactList
    {
        void AddUsers(const QString&) override {}
        void clearOnline() override {}
        bool Visible() const override { return false; }
        void Load() override {}
        void Unload() override {}
    } buddies;

    // The menu entries whose state counts.
    ActionEntry mnu_pm_no, mnu_pm_yes, mnu_blocked;

    MemoryListBox ignored;
    Room room{window};
    ChannelTable channels{room};
    QueryTable queries{privateWindows,
                       {mnu_pm_no, mnu_pm_yes, mnu_blocked},
                       [this]() -> const ListBox& { return ignored; }};
    TextWriter writer{variables};
    StatusLine status{writer, window.view};
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
        window.list.selected = static_cast<int>(window.list.rows.indexOf(row));
    }
    QStringList takeLog() { return std::exchange(log, {}); }
};
