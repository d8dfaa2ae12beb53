#pragma once

#include "commands/InputLine.h"
#include "contacts/ContactList.h"
#include "controls/Collation.h"
#include "controls/ListBox.h"
#include "controls/MenuEntry.h"
#include "platform/EventLoop.h"
#include "room/ListsForm.h"
#include "session/Ports.h"
#include "support/StandIns.h"
#include "talk/PrivateWindow.h"

// Stand-ins for everything the logic talks to. They write what they are asked to do into one
// journal, in order, one entry a call: "sock.Close", "<< NICK me", "DataIn| text".

// What all stand-ins are: a name in the journal, if there is more than one of the kind.
class Recorder
{
public:
    explicit Recorder(Journal& journal)
        : m_journal(journal)
    {
    }
    Recorder(QString name, Journal& journal)
        : m_name(std::move(name))
        , m_journal(journal)
    {
    }

protected:
    template<typename... Pieces>
    void log(const Pieces&... pieces)
    {
        m_journal(m_name, pieces...);
    }

    QString m_name;
    Journal& m_journal;
};

class RecordingWinsock final : public Winsock, Recorder
{
public:
    using Recorder::Recorder;

    State state() const override { return m_state; }
    void setState(State state) { m_state = state; }
    void Connect() override
    {
        enter(Connecting, ".Connect ", RemoteHost, ":", RemotePort, Tls ? " by TLS" : "");
    }
    void Listen() override { enter(Listening, ".Listen"); }
    void Accept(qintptr requestID) override { enter(Connected, ".Accept ", requestID); }
    void Close() override { enter(Closed, ".Close"); }
    QByteArray GetData() override { return std::exchange(m_waiting, {}); }
    void SendData(const QByteArray& bytes) override
    {
        lastSent = bytes;
        const QString text = QString::fromUtf8(bytes);
        sent += text.chopped(1);
        const bool isLine = text.endsWith(u'\n') && text.count(u'\n') == 1 && !text.contains(u'\r');
        if (isLine)
            m_journal("<< ", text.chopped(1));
        else
            log(".SendData ", text);
    }
    void setEventsHeld(bool held) override { log(held ? ".hold" : ".release"); }

    QByteArray lastSent;
    QStringList sent; // without the last character

    // What the network does.
    void arrive(const QString& data) { arrive(data.toUtf8()); }
    void arrive(const QByteArray& data)
    {
        m_waiting += data;
        Q_EMIT DataArrival(m_waiting.size());
    }
    void beConnected()
    {
        m_state = Connected;
        Q_EMIT ConnectEvent();
    }

private:
    template<typename... Pieces>
    void enter(State state, const Pieces&... pieces)
    {
        m_state = state;
        log(pieces...);
    }

    QByteArray m_waiting;
    State m_state = Closed;
};

// Waits for nothing. What a test has put into onYield or onPause runs in the next yield or pause,
// one entry in each.
struct RecordingEvents final : EventLoop, Recorder
{
    using Recorder::Recorder;

    void DoEvents() override
    {
        ++yields;
        if (!onYield.isEmpty())
            onYield.takeFirst()();
    }
    void Pause(double seconds) override
    {
        log("Pause ", QString::number(seconds));
        if (!onPause.isEmpty())
            onPause.takeFirst()();
    }

    QList<std::function<void()>> onYield;
    QList<std::function<void()>> onPause;
    int yields = 0;
};

class MemoryListBox final : public ListBox, Recorder
{
public:
    enum class Order { Sorted, AsAdded };

    MemoryListBox(QString name, Order order, Journal& journal)
        : Recorder(std::move(name), journal)
        , m_order(order)
    {
    }

    void AddItem(const QString& text) override
    {
        qsizetype place = m_order == Order::Sorted ? 0 : m_rows.size();
        while (place < m_rows.size() && collate(m_rows[place], text) <= 0)
            ++place;
        m_rows.insert(place, text);
    }
    void RemoveItem(int index) override
    {
        if (index >= 0 && index < m_rows.size())
            m_rows.removeAt(index);
    }
    void Clear() override
    {
        m_rows.clear();
        log(".Clear");
    }
    int ListCount() const override { return static_cast<int>(m_rows.size()); }
    QString List(int index) const override { return m_rows.value(index); }
    void setList(int index, const QString& text) override
    {
        if (index >= 0 && index < m_rows.size())
            m_rows[index] = text;
    }
    int ListIndex() const override { return m_selected; }
    void setListIndex(int index) override { m_selected = index; }
    void setEnabled(bool enabled) override { log(".Enabled=", enabled); }

    const QStringList& rows() const { return m_rows; }

private:
    Order m_order;
    QStringList m_rows;
    int m_selected = -1;
};

class RecordingEntry final : public MenuEntry, Recorder
{
public:
    RecordingEntry(QString name, QString caption, bool enabled, Journal& journal)
        : Recorder(std::move(name), journal)
        , m_caption(std::move(caption))
        , m_enabled(enabled)
    {
    }

    QString Caption() const override { return m_caption; }
    void setCaption(const QString& caption) override { log(".Caption=", m_caption = caption); }
    bool Enabled() const override { return m_enabled; }
    void setEnabled(bool enabled) override { log(".Enabled=", m_enabled = enabled); }
    bool Checked() const override { return m_checked; }
    void setChecked(bool checked) override { m_checked = checked; }

private:
    QString m_caption;
    bool m_enabled;
    bool m_checked = false;
};

// A chat view that reports each finished line with its styles, and being emptied.
class RecordingView final : Recorder
{
public:
    RecordingView(QString name, Journal& journal)
        : Recorder(std::move(name), journal)
    {
        view.onChange([this] { changed(); });
    }

    MemoryView view;

private:
    void changed()
    {
        if (view.TextLength() == 0)
            log(" emptied");
        else if (view.TextLength() > m_reported) {
            if (!view.Text().endsWith(QLatin1StringView("\r\n")))
                return; // more of this line is to come
            log("| ", view.runs(m_reported).chopped(2));
        }
        m_reported = view.TextLength();
    }

    qsizetype m_reported = 0;
};

struct RecordingLogin final : SignInForm, Recorder
{
    using Recorder::Recorder;

    QString nickname() const override { return Text1; }
    void setNickname(const QString& nick) override { Text1 = nick; }
    QString sessionPassword() const override { return Text3; }
    QString accountPassword() const override { return Text3; }
    void setEntriesLocked(bool locked) override { log("Login.locked=", locked); }
    void setSignCaption(const QString& caption) override { log("mnu_Sign=", caption); }
    void cmdSignout_Click() override { log("Login.cmdSignout"); }
    void Login_Log() override { log("Login.Log"); }
    void Login_UnLog() override { log("Login.UnLog"); }
    void Show() override { log("Login.Show"); }
    void Hide() override { log("Login.Hide"); }

    QString Text1 = QStringLiteral("typed");
    QString Text3;
};

struct RecordingChannel final : MainForm, Recorder
{
    using Recorder::Recorder;

    RichTextBox& DataIn() override { return dataIn.view; }
    RichTextBox& rtbTopic() override { return topic.view; }
    ListBox& lstNicks() override { return nicks; }
    void setCmdCount(const QString& caption) override { log("cmdCount=", caption); }
    void setVisible(bool visible) override { log("Channel.Visible=", visible); }
    MenuEntry& mnu_File_Connect() override { return connectEntry; }
    MenuEntry& mnu_File_Disconnect() override { return disconnectEntry; }
    QString portText() const override { return Text1; }
    void setPortText(const QString& port) override { log("Text1=", Text1 = port); }
    QString computerName() const override { return QStringLiteral("PC1"); }
    void setComputerName(const QString&) override {}
    void Show() override { log("Channel.Show"); }
    void Hide() override { log("Channel.Hide"); }

    RecordingView dataIn{QStringLiteral("DataIn"), m_journal};
    RecordingView topic{QStringLiteral("Topic"), m_journal};
    MemoryListBox nicks{QStringLiteral("lstNicks"), MemoryListBox::Order::Sorted, m_journal};
    RecordingEntry connectEntry{QStringLiteral("Connect"), QStringLiteral("&Connect"), true,
                                m_journal};
    RecordingEntry disconnectEntry{QStringLiteral("Disconnect"), {}, false, m_journal};
    QString Text1 = QStringLiteral("6667");
};

// The forms that are only told what to do.
struct RecordingForms final : NickPrompts, WebPages, Program, TrafficLog, Popup, Recorder
{
    using Recorder::Recorder;

    void showPassword() override { log("frmPassword.Show"); }
    void unloadPassword() override { log("frmPassword.Unload"); }
    void showUseNick() override { log("usenick.Show"); }
    void Show() override { log("frmPopup.Show"); }
    void setBody(const QString& text) override { log("frmPopup.Label2=", text); }
    void navigateHome(const QString& path) override { log("Home ", path); }
    void navigateMisc(const QString& path) override { log("Misc ", path); }
    void unloadSmallForms() override { log("unloadSmallForms"); }
    void End() override { log("End"); }
    bool Visible() const override { return debugVisible; }
    void received(const QString& data) override { log("DebugWin >> ", data); }
    void sent(const QString& line) override { log("DebugWin << ", line); }

    bool debugVisible = false;
};

struct RecordingBuddies final : ContactList, Recorder
{
    using Recorder::Recorder;

    void AddUsers(const QString& names) override { log("BuddyList.AddUsers ", names); }
    void clearOnline() override { log("BuddyList.clear"); }
    bool Visible() const override { return visible; }
    void Load() override { log("BuddyList.Load"); }
    void Unload() override { log("BuddyList.Unload"); }

    bool visible = false;
};

struct RecordingLists final : ListsForm, Recorder
{
    using Recorder::Recorder;

    void AddBEI(const QString& mask, const QString& setter, const QString& time) override
    {
        log("ChannelInfo.AddBEI ", mask, "|", setter, "|", time);
    }
    bool Visible() const override { return visible; }
    void Show() override { log("ChannelInfo.Show"); }

    bool visible = false;
};

struct RecordingQuery final : PrivateWindow, Recorder
{
    using Recorder::Recorder;

    RichTextBox& DataIn() override { return dataIn.view; }
    void setCaption(const QString& caption) override { log(".Caption=", caption); }
    void setNickLabel(const QString& nick) override { log(".lblNick=", nick); }
    void setHostLabel(const QString& host) override { log(".lblHost=", host); }
    void setVisible(bool visible) override { log(".Visible=", visible); }
    void setTag(const QString& tag) override { log(".Tag=", tag); }
    void SetFocus() override { log(".SetFocus"); }
    void PutText(const QString& nick, const QString& text) override
    {
        log(".PutText ", nick, ": ", text);
    }
    void Unload() override
    {
        QueryNick.clear();
        log(".Unload");
    }

    RecordingView dataIn{m_name, m_journal};
};

struct RecordingQueries final : PrivateWindowFactory, Recorder
{
    using Recorder::Recorder;

    PrivateWindow& create() override
    {
        const QString name = QStringLiteral("Query%1").arg(windows.size() + 1);
        return *windows.emplace_back(std::make_unique<RecordingQuery>(name, m_journal));
    }

    std::vector<std::unique_ptr<RecordingQuery>> windows;
};

struct MemoryInputBox final : InputBox
{
    QString text() const override { return content; }
    void setText(const QString& text) override { content = text; }
    void setTypeface(const QString& family, int points) override
    {
        typeface = QStringLiteral("%1 %2").arg(family).arg(points);
    }

    QString content;
    QString typeface;
};
