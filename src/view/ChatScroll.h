#pragma once

#include "view/ChatText.h"

#include <QtGlobal>

class ChatLayout;

// Which part of a chat view is in sight. It is held by its topmost line, so corrected heights
// above do not move the text, or follows the end.
class ChatScroll final
{
public:
    static constexpr int margin = 4; // above the first line and below the last one

    explicit ChatScroll(ChatLayout& layout);

    void setHeight(int height) { m_height = height; }
    int height() const { return m_height; }
    void textChanged(const ChatText::Change& change);
    // Lays out what is in sight. To be called after whatever changed text, layout or position.
    void settle();

    bool isFollowing() const { return m_following; }
    void follow() { m_following = true; }
    void scrollBy(int pixels);
    // To a value between 0 and maximum().
    void scrollTo(qint64 value);
    // Brings a line into the middle.
    void centre(qsizetype line);

    qsizetype firstLine() const { return m_line; }
    qsizetype lastLine() const { return m_lastLine; }
    int top(qsizetype line) const; // from the upper edge of what is in sight

    qint64 value() const;
    qint64 maximum() const;

private:
    void placeAtEnd();
    void normalise();
    bool fill(); // false: there is not enough text below

    ChatLayout& m_layout;
    int m_height = 0;
    bool m_following = true;
    qsizetype m_line = 0;
    int m_hidden = 0; // how much of that line is above the edge
    qsizetype m_lastLine = 0;
};
