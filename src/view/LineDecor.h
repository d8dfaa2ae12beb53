#pragma once

#include <QFont>
#include <QPalette>
#include <QRect>

class LineNotes;
class QPainter;

// Paints what stands beside and behind the lines of a chat view.
class LineDecor final
{
public:
    struct Line
    {
        qsizetype number = 0;
        QRect room;       // over the whole width of the view
        int baseline = 0; // of its first row
    };

    LineDecor(const LineNotes& notes, const QPalette& palette, const QFont& font);

    // Left of the text, for a view that shows times.
    static int timeWidth(const QFont& font);
    static QColor markColor() { return {224, 148, 28}; }

    void drawGround(QPainter& painter, const Line& line) const;
    void drawTime(QPainter& painter, const Line& line) const;

    // When a line came, for a hint; empty where that is not known.
    static QString timeHint(const LineNotes& notes, qsizetype line);

private:
    const LineNotes& m_notes;
    const QPalette& m_palette;
    const QFont& m_font;
};
