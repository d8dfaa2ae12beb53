#pragma once

#include <QtGlobal>

#include <vector>

// Heights of lines in logical pixels and their sums. A line is appended, changed and found by its
// height in O(log n).
class LineHeights final
{
public:
    LineHeights() = default;
    explicit LineHeights(std::vector<int> heights);

    qsizetype count() const { return static_cast<qsizetype>(m_heights.size()); }
    int at(qsizetype line) const { return m_heights[line]; }
    qint64 total() const { return top(count()); }
    // Where a line starts; the total behind the last one.
    qint64 top(qsizetype line) const;
    // The line that covers a height, the last one beyond the end. Not for an empty table.
    qsizetype lineAt(qint64 height) const;

    void append(int height);
    void set(qsizetype line, int height);
    void truncate(qsizetype count);

private:
    std::vector<int> m_heights;
    std::vector<int> m_sums; // a binary indexed tree: each entry sums the lines its low bit spans
};
