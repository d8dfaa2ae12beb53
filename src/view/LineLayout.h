#pragma once

#include "view/ChatText.h"

#include <QRect>
#include <QTextLayout>

#include <memory>
#include <span>
#include <vector>

class QPainter;
class QPalette;
class StyleFormats;
struct InlinePicture;

// One line of a chat view, shaped and wrapped exactly. Coordinates are logical pixels from the
// line's top left corner, columns are characters from its start.
class LineLayout final
{
public:
    struct Row
    {
        QTextLine line;
        int segmentStart = 0;
        int start = 0;
        int end = 0;
        int top = 0;
        int height = 0;
        qreal baseline = 0; // from the top of the line
    };

    enum class Hit {
        Character, // the one under the point, -1 outside the row's text
        Gap,       // the nearest place between two characters
    };

    LineLayout(const ChatText::Line& line, const StyleFormats& formats, int width);

    void wrap(int width);

    int height() const { return m_height; }
    const std::vector<Row>& rows() const { return m_rows; }
    const Row& rowAt(int y) const;
    const Row& rowOf(int column) const;
    int columnAt(QPoint point, Hit hit) const;
    QRect caret(int column) const;
    QRect characterRect(int column) const;

    struct Selection
    {
        int start = 0;
        int end = 0; // beyond the text: the line end is selected too
        QColor background;
        QColor foreground;
    };
    void draw(QPainter& painter, QPoint at, const Selection& selection, const QRect& clip) const;

    void underline(QPainter& painter, QPoint at, int start, int end, const QColor& color) const;

private:
    struct Segment
    {
        int start = 0;
        std::unique_ptr<QTextLayout> layout;
    };
    struct Ground
    {
        int start = 0;
        int end = 0;
        QColor color;
    };
    struct Picture
    {
        int column = 0;
        const InlinePicture* picture = nullptr;
    };

    void addSegment(int start);
    int wrapSegment(const Segment& segment, int width);
    void addRow(QTextLine line, int segmentStart);
    QList<QTextLayout::FormatRange> selectionFormats(const Segment& segment,
                                                     const Selection& selection) const;
    static QRect characterRect(const Row& row, int column);
    QRegion regionOf(const Row& row, int start, int end) const;
    void fillGrounds(QPainter& painter, QPoint at, const QRect& clip) const;
    void fillSelection(QPainter& painter, QPoint at, const Selection& selection,
                       const Row& row) const;
    void drawPictures(QPainter& painter, QPoint at, const Row& first, const Row& last) const;
    std::span<const Picture> picturesIn(int from, int to) const;

    QString m_text; // a stand-in where a picture is
    QFont m_font;
    QList<QTextLayout::FormatRange> m_formats;
    std::vector<Ground> m_grounds;
    std::vector<Picture> m_pictures;
    std::vector<Segment> m_segments;
    std::vector<Row> m_rows;
    int m_height = 0;
};
