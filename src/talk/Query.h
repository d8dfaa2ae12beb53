#pragma once

#include "common/Int16.h"
#include "platform/FlashWindow.h"
#include "talk/PrivateWindow.h"
#include "talk/QueryForm.h"
#include "text/IncomingText.h"
#include "text/TextHistory.h"

#include <QRgb>

#include <functional>
#include <memory>
#include <vector>

class ChannelTable;
class Clock;
class Dialogs;
class EventLoop;
class Handlers;
class LineSink;
class LinkOpener;
struct OwnTextStyle;
struct SessionVariables;
class TextWriter;
class ViewLook;

// What a private window asks of the other windows.
class QueryNeighbours
{
public:
    virtual ~QueryNeighbours() = default;

    virtual QRgb inputColor() const = 0; // of the main window's input line
    virtual void showAuthor() = 0;
    virtual void showIgnoreList() = 0;
    virtual void showFontOption() = 0;
    virtual void showPalette() = 0; // frmcolor
    virtual void showBuddyList() = 0;
};

// One place for a private conversation. Its window is loaded by whatever touches it, with a first
// line that says when, and is gone when it is closed; the place stays and takes the next peer.
class Query final : public PrivateWindow
{
public:
    struct Desk
    {
        const Handlers& handlers;
        const SessionVariables& variables;
        const OwnTextStyle& style;
        const TextWriter& writer;
        const ChannelTable& channels;
        const Clock& clock;
        LineSink& server;
        Dialogs& dialogs;
        EventLoop& events;
        LinkOpener& links;
        QueryNeighbours& neighbours;
        std::function<QString(const QString& target, const QString& text)> ProcessInput;
        std::function<void(const QString& name)> PlayWave; // asks the sound option itself
        std::function<void(QWidget& window)> FlashWindow = ::FlashWindow;
        std::shared_ptr<ViewLook> look = nullptr; // of all views
        IncomingText::Written written = {};
        bool connected = true; // whether anybody hears, which the windows show
    };

    explicit Query(const Desk& desk);
    ~Query() override;
    Q_DISABLE_COPY_MOVE(Query)

    RichTextBox& DataIn() override;
    void setCaption(const QString& caption) override;
    void setNickLabel(const QString& nick) override;
    void setHostLabel(const QString& host) override;
    void setVisible(bool visible) override;
    void setTag(const QString& tag) override { m_tag = tag; }
    void SetFocus() override;
    void PutText(const QString& nick, const QString& text) override;
    void Unload() override;

    // Nothing in the window calls it, so its arrow keys find no lines.
    void DoHistory(const QString& text);

    QString Tag() const { return m_tag; }
    int Unread() const { return m_unread; }
    // None while the place is free.
    QueryForm* window() const { return m_form.get(); }

private:
    QueryForm& form();
    void connectForm(QueryForm& form);
    void connectLinks(QueryForm& form);
    void Form_Load();
    void Form_Activate();
    void setUnread(int unread);
    void flsh_Timer();

    void DataOut_KeyDown(int keyCode);
    void DataOut_KeyPress(int character);
    void DataIn_MouseMove(const QPoint& point);
    void DataIn_MouseUp(const QPoint& point);
    void DataIn_DblClick();
    void LabelAction_Click();
    QString wordAt(const QPoint& point);

    const Desk& m_desk;
    IncomingText m_incoming;
    std::unique_ptr<QueryForm> m_form;

    QString m_tag;
    QString ClickedWord;
    Int16 m_unread;
    TextHistory m_history;
};

// Makes the places and never gives one up: the table of conversations forgets them at a new
// connection, somebody may still refer to them, and without its window a place is small.
class QueryFactory final : public PrivateWindowFactory
{
public:
    explicit QueryFactory(Query::Desk desk);

    PrivateWindow& create() override;
    const std::vector<std::unique_ptr<Query>>& places() const { return m_places; }
    void setConnected(bool connected);

private:
    Query::Desk m_desk;
    std::vector<std::unique_ptr<Query>> m_places;
};
