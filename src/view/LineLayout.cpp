#include "view/LineLayout.h"

#include "controls/SvgPicture.h"
#include "view/RichTextBox.h"
#include "view/StyleFormats.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

// Shaping takes more than linear time on hostile text, so it is given only so much at once.
constexpr int segmentLength = 1024;
constexpr qreal outOfSight = 1 << 24;

// How far a picture reaches above and below the baseline when it is centred on the text.
struct PictureExtent
{
    PictureExtent(const QTextLine& line, int height)
    {
        const qreal middle = (line.ascent() - line.descent()) / 2;
        ascent = middle + height / 2.0;
        descent = height / 2.0 - middle;
    }
    qreal ascent;
    qreal descent;
};

int columnIn(const LineLayout::Row& row, int column)
{
    return column - row.segmentStart;
}

} // namespace

LineLayout::LineLayout(const ChatText::Line& line, const StyleFormats& formats, int width)
    : m_text(line.text)
    , m_font(formats.font(line.runs.front().attributes.style))
    , m_formats(formats.formats(line))
{
    for (size_t i = 0; i < line.runs.size(); ++i) {
        if (line.runs[i].attributes.picture == 0) {
            const QColor& ground = formats.ground(line.runs[i].attributes.style);
            if (ground.isValid())
                m_grounds.push_back({line.runs[i].start, line.runEnd(i), ground});
            continue;
        }
        for (int column = line.runs[i].start; column < line.runEnd(i); ++column) {
            m_pictures.push_back({column, &formats.picture(line.runs[i].attributes)});
            m_text[column] = u'*';
        }
    }
    wrap(width);
}

void LineLayout::wrap(int width)
{
    m_rows.clear();
    m_height = 0;
    if (m_text.size() > segmentLength)
        m_segments.clear(); // where they start depends on the width
    if (m_segments.empty())
        addSegment(0);
    int next = wrapSegment(m_segments.front(), width);
    while (next < m_text.size()) {
        addSegment(next);
        next = wrapSegment(m_segments.back(), width);
    }
}

const LineLayout::Row& LineLayout::rowAt(int y) const
{
    const auto below = std::upper_bound(m_rows.begin() + 1, m_rows.end(), y,
                                        [](int value, const Row& row) { return value < row.top; });
    return *std::prev(below);
}

const LineLayout::Row& LineLayout::rowOf(int column) const
{
    const auto after =
        std::upper_bound(m_rows.begin() + 1, m_rows.end(), column,
                         [](int value, const Row& row) { return value < row.start; });
    return *std::prev(after);
}

int LineLayout::columnAt(QPoint point, Hit hit) const
{
    const Row& row = rowAt(point.y());
    if (hit == Hit::Character) {
        // The natural width of a row leaves out the blank that it ends with.
        const qreal first = row.line.cursorToX(columnIn(row, row.start));
        const qreal last = row.line.cursorToX(columnIn(row, row.end));
        const QRectF text = row.line.naturalTextRect();
        if (point.x() < std::min({text.left(), first, last}) ||
            point.x() >= std::max({text.right(), first, last}) || point.y() < row.top ||
            point.y() >= row.top + row.height)
            return -1;
        const int column = row.line.xToCursor(point.x(), QTextLine::CursorOnCharacter);
        return std::min(column + row.segmentStart, row.end - 1);
    }
    const int column = row.line.xToCursor(point.x()) + row.segmentStart;
    // Behind the last character of a wrapped row is the start of the next one.
    const bool isLast = &row == &m_rows.back();
    return std::clamp(column, row.start, isLast ? row.end : std::max(row.end - 1, row.start));
}

QRect LineLayout::caret(int column) const
{
    const Row& row = rowOf(column);
    const auto x = static_cast<int>(row.line.cursorToX(columnIn(row, column)));
    return {x, row.top, 1, row.height};
}

QRect LineLayout::characterRect(int column) const
{
    return characterRect(rowOf(column), column);
}

QRect LineLayout::characterRect(const Row& row, int column)
{
    const qreal from = row.line.cursorToX(columnIn(row, column));
    const qreal to = row.line.cursorToX(columnIn(row, column), QTextLine::Trailing);
    const auto left = static_cast<int>(std::floor(std::min(from, to)));
    return {left, row.top, static_cast<int>(std::ceil(std::max(from, to))) - left, row.height};
}

void LineLayout::draw(QPainter& painter, QPoint at, const Selection& selection,
                      const QRect& clip) const
{
    if (m_rows.empty())
        return;
    fillGrounds(painter, at, clip);
    const Row* const first = &rowAt(clip.top() - at.y());
    const Row* const last = &rowAt(clip.bottom() - at.y());
    for (const Row* row = first; row <= last; ++row)
        fillSelection(painter, at, selection, *row);
    for (const Segment& segment : m_segments) {
        const bool isInSight = segment.start < last->end &&
                               segment.start + segment.layout->text().size() > first->segmentStart;
        if (isInSight || m_segments.size() == 1)
            segment.layout->draw(&painter, at, selectionFormats(segment, selection), clip);
    }
    drawPictures(painter, at, *first, *last);
}

// Those of some columns, in order.
std::span<const LineLayout::Picture> LineLayout::picturesIn(int from, int to) const
{
    const auto standsBefore = [](const Picture& picture, int column) {
        return picture.column < column;
    };
    const auto begin = std::lower_bound(m_pictures.begin(), m_pictures.end(), from, standsBefore);
    return {begin, std::lower_bound(begin, m_pictures.end(), to, standsBefore)};
}

// Neighbours in the text need not be neighbours on the screen.
QRegion LineLayout::regionOf(const Row& row, int start, int end) const
{
    QRegion region;
    for (int column = std::max(start, row.start); column < std::min(end, row.end); ++column)
        region += characterRect(row, column);
    return region;
}

void LineLayout::fillGrounds(QPainter& painter, QPoint at, const QRect& clip) const
{
    constexpr int radius = 3;
    if (m_grounds.empty())
        return;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    for (const Ground& ground : m_grounds) {
        painter.setBrush(ground.color);
        for (const Row& row : m_rows) {
            if (at.y() + row.top > clip.bottom() || at.y() + row.top + row.height < clip.top())
                continue;
            for (const QRect& part : regionOf(row, ground.start, ground.end))
                painter.drawRoundedRect(part.translated(at).adjusted(-2, 1, 1, -1), radius, radius);
        }
    }
    painter.restore();
}

void LineLayout::underline(QPainter& painter, QPoint at, int start, int end,
                           const QColor& color) const
{
    for (const Row& row : m_rows) {
        for (const QRect& part : regionOf(row, start, end)) {
            const int y = at.y() + static_cast<int>(row.baseline) + 1;
            painter.fillRect(QRect(at.x() + part.left(), y, part.width(), 1), color);
        }
    }
}

// Over the whole height of the row, so that the selection is one piece.
void LineLayout::fillSelection(QPainter& painter, QPoint at, const Selection& selection,
                               const Row& row) const
{
    QRegion region = regionOf(row, selection.start, selection.end);
    if (&row == &m_rows.back() && selection.start <= row.end && selection.end > row.end)
        region += caret(row.end).adjusted(0, 0, row.height / 4, 0);
    for (const QRect& part : region)
        painter.fillRect(part.translated(at), selection.background);
}

void LineLayout::addSegment(int start)
{
    const auto size = static_cast<int>(m_text.size());
    int end = std::min(start + segmentLength, size);
    if (end < size && m_text[end - 1].isHighSurrogate())
        --end;
    auto layout = std::make_unique<QTextLayout>(m_text.mid(start, end - start), m_font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout->setTextOption(option);
    layout->setCacheEnabled(true);
    QList<QTextLayout::FormatRange> formats;
    for (const QTextLayout::FormatRange& range : m_formats) {
        const int from = std::max(range.start, start);
        const int to = std::min(range.start + range.length, end);
        if (from < to)
            formats.append({from - start, to - from, range.format});
    }
    layout->setFormats(formats);
    m_segments.push_back({start, std::move(layout)});
}

// Returns where the next segment starts. A row that could go on in it is left to it.
int LineLayout::wrapSegment(const Segment& segment, int width)
{
    QTextLayout& layout = *segment.layout;
    const auto length = static_cast<int>(layout.text().size());
    const bool isLast = segment.start + length == m_text.size();
    int next = segment.start + length;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        const bool endsSegment = line.textStart() + line.textLength() >= length;
        if (endsSegment && !isLast && line.textStart() > 0) {
            line.setPosition({0, outOfSight});
            next = segment.start + line.textStart();
        } else {
            addRow(line, segment.start);
        }
    }
    layout.endLayout();
    return next;
}

void LineLayout::addRow(QTextLine line, int segmentStart)
{
    Row row;
    row.line = line;
    row.segmentStart = segmentStart;
    row.start = segmentStart + line.textStart();
    row.end = row.start + line.textLength();
    row.top = m_height;
    qreal ascent = line.ascent();
    qreal descent = line.descent();
    for (const Picture& picture : picturesIn(row.start, row.end)) {
        const PictureExtent extent(line, picture.picture->size.height());
        ascent = std::max(ascent, extent.ascent);
        descent = std::max(descent, extent.descent);
    }
    row.height = StyleFormats::rowHeight(ascent, descent);
    row.baseline = row.top + std::ceil(ascent) + 1;
    line.setPosition({0, row.baseline - line.ascent()});
    m_rows.push_back(row);
    m_height += row.height;
}

QList<QTextLayout::FormatRange> LineLayout::selectionFormats(const Segment& segment,
                                                             const Selection& selection) const
{
    const auto length = static_cast<int>(segment.layout->text().size());
    const int start = std::clamp(selection.start - segment.start, 0, length);
    const int end = std::clamp(selection.end - segment.start, 0, length);
    QList<QTextLayout::FormatRange> ranges;
    if (start == end)
        return ranges;
    QTextCharFormat format;
    format.setForeground(selection.foreground);
    int from = start;
    for (const Picture& picture : picturesIn(segment.start + start, segment.start + end)) {
        const int column = picture.column - segment.start;
        if (from < column)
            ranges.append({from, column - from, format});
        from = column + 1;
    }
    if (from < end)
        ranges.append({from, end - from, format});
    return ranges;
}

void LineLayout::drawPictures(QPainter& painter, QPoint at, const Row& first, const Row& last) const
{
    const qreal ratio = painter.device()->devicePixelRatioF();
    for (const Picture& picture : picturesIn(first.start, last.end)) {
        const Row& row = rowOf(picture.column);
        const QSize size = picture.picture->size;
        const PictureExtent extent(row.line, size.height());
        const QRect character = characterRect(picture.column).translated(at);
        const int top = at.y() + qRound(row.baseline - extent.ascent);
        painter.drawPixmap(QRect({character.left(), top}, size),
                           svgPixmap(picture.picture->resource, size, ratio));
    }
}
