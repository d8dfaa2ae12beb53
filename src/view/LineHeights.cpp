#include "view/LineHeights.h"

#include <algorithm>
#include <bit>

namespace {

size_t lowBit(size_t number)
{
    return number & (~number + 1);
}

} // namespace

LineHeights::LineHeights(std::vector<int> heights)
    : m_heights(std::move(heights))
    , m_sums(m_heights)
{
    for (size_t i = 1; i <= m_sums.size(); ++i) {
        const size_t parent = i + lowBit(i);
        if (parent <= m_sums.size())
            m_sums[parent - 1] += m_sums[i - 1];
    }
}

qint64 LineHeights::top(qsizetype line) const
{
    qint64 sum = 0;
    for (auto i = static_cast<size_t>(line); i > 0; i -= lowBit(i))
        sum += m_sums[i - 1];
    return sum;
}

qsizetype LineHeights::lineAt(qint64 height) const
{
    size_t line = 0;
    for (size_t step = std::bit_floor(m_sums.size()); step > 0; step /= 2) {
        if (line + step <= m_sums.size() && m_sums[line + step - 1] <= height) {
            line += step;
            height -= m_sums[line - 1];
        }
    }
    return std::min(static_cast<qsizetype>(line), count() - 1);
}

void LineHeights::append(int height)
{
    m_heights.push_back(height);
    const size_t number = m_heights.size();
    int sum = height;
    for (size_t i = number - 1; i > number - lowBit(number); i -= lowBit(i))
        sum += m_sums[i - 1];
    m_sums.push_back(sum);
}

void LineHeights::set(qsizetype line, int height)
{
    const int difference = height - m_heights[line];
    if (difference == 0)
        return;
    m_heights[line] = height;
    for (auto i = static_cast<size_t>(line) + 1; i <= m_sums.size(); i += lowBit(i))
        m_sums[i - 1] += difference;
}

void LineHeights::truncate(qsizetype count)
{
    if (count < this->count()) {
        m_heights.resize(count);
        m_sums.resize(count);
    }
}
