#pragma once

#include <QString>

class LineSink;
class RichTextBox;
class TextWriter;
struct Room;

// The topic of a room: shown, and edited by whoever has been given operator status since the last
// topic arrived. The view's Tag holds the lock.
class TopicField final
{
public:
    TopicField(const Room& room, LineSink& server)
        : m_room(room)
        , m_server(server)
    {
    }

    static void setLocked(RichTextBox& topic, bool locked);
    static bool isLocked(const RichTextBox& topic);
    // Shows a topic. Its first character is taken off again, whatever it is.
    static void show(RichTextBox& topic, const TextWriter& writer, const QString& text);

    // What the box is to take for the key or character; 0 for nothing. Enter sends the topic.
    int KeyDown(int keyCode) const;
    int KeyPress(int character) const;

private:
    const Room& m_room;
    LineSink& m_server;
};
