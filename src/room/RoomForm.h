#pragma once

#include <QString>

class ListBox;
class RichTextBox;

// What a chat room asks of the window that shows it.
class RoomForm
{
public:
    virtual ~RoomForm() = default;

    virtual RichTextBox& DataIn() = 0;
    virtual RichTextBox& rtbTopic() = 0;
    virtual ListBox& lstNicks() = 0;
    virtual void setCmdCount(const QString& caption) = 0; // the counter of chatters
    virtual void setVisible(bool visible) = 0;
};
