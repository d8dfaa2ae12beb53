#pragma once

#include "input/InputLine.h"
#include "platform/Clock.h"
#include "platform/Dialogs.h"
#include "platform/EventLoop.h"
#include "platform/ListBox.h"
#include "platform/MenuEntry.h"
#include "platform/Winsock.h"
#include "query/PrivateWindow.h"
#include "session/Ports.h"
#include "support/MemoryView.h"

#include <functional>
#include <memory>
#include <vector>

// Stand-ins for everything the logic talks to. They write what they are asked to do into one
// journal, in order, one entry a call: "sock.Close", "<< NICK me", "DataIn| text".

class Journal final
{
public:
    void operator()(const QString& entry) { m_entries.append(entry); }
    // What has happened since the last call.
    QStringList take() { return std::exchange(m_entries, {}); }

private:
    QStringList m_entries;
};

class RecordingWinsock final : public Winsock
{
public:
    RecordingWinsock(QString name, Journal& journal)
        : m_name(std::move(name))
        , m_journal(journal)
    {
    }

    State state() const override { return m_state; }
    void setState(State state) { m_state = state; }
    void Connect() override;
    void Listen() override;
    void Accept(qintptr requestID) override;
    void Close() override;
    QString GetData() override { return std::exchange(m_waiting, {}); }
    void SendData(const QString& text) override;
    void setEventsHeld(bool held) override;

    // What the network does.
    void arrive(const QString& data);
    void beConnected();

private:
    QString m_name;
    Journal& m_journal;
    QString m_waiting;
    State m_state = Closed;
};

// Waits for nothing. What a test has put into onYield or onPause runs in the next yield or pause,
// one entry in each.
class RecordingEvents final : public EventLoop
{
public:
    explicit RecordingEvents(Journal& journal)
        : m_journal(journal)
    {
    }

    void DoEvents() override;
    void Pause(double seconds) override;

    QList<std::function<void()>> onYield;
    QList<std::function<void()>> onPause;
    int yields = 0;

private:
    Journal& m_journal;
};

class MemoryListBox final : public ListBox
{
public:
    enum class Order { Sorted, AsAdded };

    MemoryListBox(QString name, Order order, Journal& journal)
        : m_name(std::move(name))
        , m_order(order)
        , m_journal(journal)
    {
    }

    void AddItem(const QString& text) override;
    void RemoveItem(int index) override;
    void Clear() override;
    int ListCount() const override { return static_cast<int>(m_rows.size()); }
    QString List(int index) const override { return m_rows.value(index); }
    void setList(int index, const QString& text) override;
    int ListIndex() const override { return m_selected; }
    void setListIndex(int index) override { m_selected = index; }
    void setEnabled(bool enabled) override;

    const QStringList& rows() const { return m_rows; }

private:
    QString m_name;
    Order m_order;
    Journal& m_journal;
    QStringList m_rows;
    int m_selected = -1;
};

class RecordingEntry final : public MenuEntry
{
public:
    RecordingEntry(QString name, QString caption, bool enabled, Journal& journal)
        : m_name(std::move(name))
        , m_caption(std::move(caption))
        , m_enabled(enabled)
        , m_journal(journal)
    {
    }

    QString Caption() const override { return m_caption; }
    void setCaption(const QString& caption) override;
    bool Enabled() const override { return m_enabled; }
    void setEnabled(bool enabled) override;
    bool Checked() const override { return m_checked; }
    void setChecked(bool checked) override { m_checked = checked; }

private:
    QString m_name;
    QString m_caption;
    bool m_enabled;
    bool m_checked = false;
    Journal& m_journal;
};

// A chat view that reports each finished line with its styles, and being emptied.
class RecordingView final
{
public:
    RecordingView(QString name, Journal& journal);

    MemoryView view;

private:
    void changed();

    QString m_name;
    Journal& m_journal;
    qsizetype m_reported = 0;
};

class RecordingLogin final : public SignInForm
{
public:
    explicit RecordingLogin(Journal& journal)
        : m_journal(journal)
    {
    }

    QString nickname() const override { return Text1; }
    void setNickname(const QString& nick) override { Text1 = nick; }
    QString sessionPassword() const override { return Text3; }
    void setEntriesLocked(bool locked) override;
    void setSignCaption(const QString& caption) override;
    void cmdSignout_Click() override;
    void Login_Log() override;
    void Login_UnLog() override;
    void Show() override;
    void Hide() override;

    QString Text1 = QStringLiteral("typed");
    QString Text3;

private:
    Journal& m_journal;
};

class RecordingChannel final : public MainForm
{
public:
    explicit RecordingChannel(Journal& journal);

    RichTextBox& DataIn() override { return dataIn.view; }
    RichTextBox& rtbTopic() override { return topic.view; }
    ListBox& lstNicks() override { return nicks; }
    void setCmdCount(const QString& caption) override;
    void setVisible(bool visible) override;
    MenuEntry& mnu_File_Connect() override { return connectEntry; }
    MenuEntry& mnu_File_Disconnect() override { return disconnectEntry; }
    QString portText() const override { return Text1; }
    void setPortText(const QString& port) override;
    QString computerName() const override { return QStringLiteral("PC1"); }
    void setComputerName(const QString&) override {}
    void Show() override;
    void Hide() override;

    RecordingView dataIn;
    RecordingView topic;
    MemoryListBox nicks;
    RecordingEntry connectEntry;
    RecordingEntry disconnectEntry;
    QString Text1 = QStringLiteral("6667");

private:
    Journal& m_journal;
};

// The forms that are only told what to do.
class RecordingForms final : public NickPrompts, public WebPages, public Program, public TrafficLog
{
public:
    explicit RecordingForms(Journal& journal)
        : m_journal(journal)
    {
    }

    void showPassword() override;
    void unloadPassword() override;
    void showUseNick() override;
    void navigateHome(const QString& path) override;
    void navigateMisc(const QString& path) override;
    void unloadSmallForms() override;
    void End() override;
    bool Visible() const override { return debugVisible; }
    void received(const QString& data) override;
    void sent(const QString& line) override;

    bool debugVisible = false;

private:
    Journal& m_journal;
};

class RecordingBuddies final : public ContactList
{
public:
    explicit RecordingBuddies(Journal& journal)
        : m_journal(journal)
    {
    }

    void AddUsers(const QString& names) override;
    void clearOnline() override;
    bool Visible() const override { return visible; }
    void Load() override;
    void Unload() override;

    bool visible = false;

private:
    Journal& m_journal;
};

class RecordingLists final : public ListsForm
{
public:
    explicit RecordingLists(Journal& journal)
        : m_journal(journal)
    {
    }

    void AddBEI(const QString& mask, const QString& setter, const QString& time) override;
    bool Visible() const override { return visible; }
    void Show() override;

    bool visible = false;

private:
    Journal& m_journal;
};

class RecordingPopup final : public Popup
{
public:
    explicit RecordingPopup(Journal& journal)
        : m_journal(journal)
    {
    }

    void Show() override;
    void setBody(const QString& text) override;

private:
    Journal& m_journal;
};

class RecordingDialogs final : public Dialogs
{
public:
    explicit RecordingDialogs(Journal& journal)
        : m_journal(journal)
    {
    }

    void MsgBox(const QString& text, const QString& title, Icon icon) override;
    bool askYesNo(const QString& text, const QString& title) override;
    QString InputBox(const QString& prompt, const QString& title) override;
    void Beep() override;

    bool answerYes = false;
    QString nextInput;

private:
    Journal& m_journal;
};

class RecordingQuery final : public PrivateWindow
{
public:
    RecordingQuery(int number, Journal& journal);

    RichTextBox& DataIn() override { return dataIn.view; }
    void setCaption(const QString& caption) override;
    void setNickLabel(const QString& nick) override;
    void setHostLabel(const QString& host) override;
    void setVisible(bool visible) override;
    void setTag(const QString& tag) override;
    void SetFocus() override;
    void PutText(const QString& nick, const QString& text) override;
    void Unload() override;

private:
    QString m_name;
    Journal& m_journal;

public:
    RecordingView dataIn;
};

class RecordingQueries final : public PrivateWindowFactory
{
public:
    explicit RecordingQueries(Journal& journal)
        : m_journal(journal)
    {
    }

    PrivateWindow& create() override;

    std::vector<std::unique_ptr<RecordingQuery>> windows;

private:
    Journal& m_journal;
};

class MemoryInputBox final : public InputBox
{
public:
    QString text() const override { return content; }
    void setText(const QString& text) override { content = text; }
    void setTypeface(const QString& family, int points) override;

    QString content;
    QString typeface;
};

class FixedClock final : public Clock
{
public:
    QDateTime now() const override { return QDateTime(QDate(2003, 4, 5), QTime(6, 7, 8)); }
};
