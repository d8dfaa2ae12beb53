#pragma once

#include "view/LineLayout.h"

#include <QRect>

class ChatLayout;
class ChatScroll;
class ChatText;

// Where positions of the text are on the screen, and how a caret moves there. Points are in the
// coordinates of what is in sight; the scroll position must have settled.
class CaretGeometry final
{
public:
    enum class Motion {
        NextCharacter,
        PreviousCharacter,
        NextWord,
        PreviousWord,
        NextRow,
        PreviousRow,
        NextPage,
        PreviousPage,
        RowStart,
        RowEnd,
        TextStart,
        TextEnd,
    };

    CaretGeometry(const ChatText& text, ChatLayout& layout, ChatScroll& scroll);

    // The nearest place between characters.
    qsizetype positionAt(QPoint point) const;
    // The character under the point, -1 where there is none.
    qsizetype characterAt(QPoint point) const;
    // The place of a caret, one pixel wide.
    QRect caret(qsizetype position) const;
    QRect character(qsizetype position) const;

    bool isInSight(qsizetype position) const;
    void scrollTo(qsizetype position);

    qsizetype moved(qsizetype position, Motion motion);

private:
    struct Place
    {
        qsizetype line = 0;
        QPoint point; // within it
    };
    Place placeAt(QPoint point) const;
    qsizetype movedVertically(qsizetype position, Motion motion);
    qsizetype rowEnd(qsizetype position) const;
    int pageHeight() const;

    const ChatText& m_text;
    ChatLayout& m_layout;
    ChatScroll& m_scroll;
    int m_goal = -1; // the x that a caret keeps on its way over shorter rows
    qsizetype m_goalPosition = -1;
};
