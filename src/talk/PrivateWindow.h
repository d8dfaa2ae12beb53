#pragma once

#include <QString>

class RichTextBox;

// One private conversation as the table of them sees it. The window of a closed conversation
// stays as a free slot: its QueryNick is empty, and it loads itself again for the next peer.
class PrivateWindow
{
public:
    virtual ~PrivateWindow() = default;

    virtual RichTextBox& DataIn() = 0;
    virtual void setCaption(const QString& caption) = 0;
    virtual void setNickLabel(const QString& nick) = 0; // lblNick
    virtual void setHostLabel(const QString& host) = 0; // lblHost
    virtual void setVisible(bool visible) = 0;
    virtual void setTag(const QString& tag) = 0; // the slot number as text
    virtual void SetFocus() = 0;
    virtual void PutText(const QString& nick, const QString& text) = 0;
    virtual void Unload() = 0; // empties QueryNick

    QString QueryNick;
    QString QueryHost; // "user@host" of the peer; empty if nobody has said it

    // Everything that names the peer.
    void setPeer(const QString& nick)
    {
        setCaption(nick);
        QueryNick = nick;
        setNickLabel(nick);
    }

    void setPeerHost(const QString& host)
    {
        QueryHost = host;
        setHostLabel(host);
    }
};

// Makes the windows of new conversations and keeps them alive.
class PrivateWindowFactory
{
public:
    virtual ~PrivateWindowFactory() = default;
    virtual PrivateWindow& create() = 0;
};
