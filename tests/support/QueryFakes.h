#pragma once

#include "controls/ListBoxWidget.h"
#include "platform/Dialogs.h"
#include "room/RoomForm.h"
#include "support/MemoryView.h"
#include "wire/LineSink.h"
#include "wire/Winsock.h"

#include <QStringList>

#include <utility>

// What the windows of private talk and contacts lean on, as plain records.

class Server final : public ServerLink
{
public:
    void SendData(const QString& line) override { sent += line; }
    int sockState() const override { return state; }
    QString remoteHost() const override { return {}; }
    int remotePort() const override { return 0; }

    int state = Winsock::Connected;
    QStringList sent;
};

// Titles and texts of the boxes; a question ends its title with "?".
class Boxes final : public Dialogs
{
public:
    void MsgBox(const QString& text, const QString& title, Icon) override
    {
        shown += title + QLatin1StringView(": ") + text;
    }
    bool askYesNo(const QString&, const QString&) override { return false; }
    QString InputBox(const QString& prompt, const QString& title) override
    {
        shown += title + QLatin1StringView("? ") + prompt;
        return answer;
    }
    void Beep() override { ++beeps; }

    QString answer;
    QStringList shown;
    int beeps = 0;
};

class RoomWindow final : public RoomForm
{
public:
    RichTextBox& DataIn() override { return view; }
    RichTextBox& rtbTopic() override { return topic; }
    ListBox& lstNicks() override { return nicks; }
    void setCmdCount(const QString&) override {}
    void setVisible(bool) override {}

    MemoryView view;
    MemoryView topic;
    ListBoxWidget nicks{ListBoxWidget::Order::Sorted};
};
