#include "view/ChatLayout.h"

#include <algorithm>
#include <cmath>

ChatLayout::ChatLayout(const ChatText& text, std::unique_ptr<StyleFormats> formats)
    : m_text(text)
    , m_formats(std::move(formats))
{
}

void ChatLayout::textChanged(const ChatText::Change& change)
{
    const auto measured = static_cast<qsizetype>(m_extents.size());
    if (change.line < measured) {
        m_extents.resize(change.line);
        m_heights.truncate(change.line);
    }
    if (m_layouts.empty() || m_layouts.rbegin()->first < change.line)
        return;
    if (change.removedLines == 0 && change.addedLines == 0)
        m_layouts.erase(change.line);
    else
        m_layouts.erase(m_layouts.lower_bound(change.line), m_layouts.end());
}

void ChatLayout::setWidth(int width)
{
    if (width == m_width)
        return;
    m_width = width;
    std::vector<int> heights;
    heights.reserve(m_extents.size());
    for (const StyleFormats::Extent& extent : m_extents)
        heights.push_back(estimatedHeight(extent));
    const auto last = static_cast<qsizetype>(heights.size()) - 1;
    if (last >= 0 && isHidden(last))
        heights.back() = 0;
    m_heights = LineHeights(std::move(heights));
    for (auto& [line, layout] : m_layouts) {
        layout->wrap(width);
        if (!isHidden(line))
            m_heights.set(line, layout->height());
    }
}

void ChatLayout::setFormats(std::unique_ptr<StyleFormats> formats)
{
    m_formats = std::move(formats);
    m_layouts.clear();
    m_extents.clear();
    m_heights = {};
}

void ChatLayout::update()
{
    for (auto line = m_heights.count(); line < m_text.lineCount(); ++line) {
        m_extents.push_back(m_formats->estimate(m_text, line));
        m_heights.append(isHidden(line) ? 0 : estimatedHeight(m_extents.back()));
    }
}

const LineLayout& ChatLayout::line(qsizetype line)
{
    std::unique_ptr<LineLayout>& layout = m_layouts[line];
    if (!layout) {
        layout = std::make_unique<LineLayout>(m_text.line(line), *m_formats, m_width);
        if (!isHidden(line))
            m_heights.set(line, layout->height());
    }
    return *layout;
}

int ChatLayout::exactHeight(qsizetype line)
{
    return isHidden(line) ? 0 : this->line(line).height();
}

void ChatLayout::keepNear(qsizetype first, qsizetype last)
{
    const qsizetype reach = last - first + 1;
    m_layouts.erase(m_layouts.begin(), m_layouts.lower_bound(first - reach));
    m_layouts.erase(m_layouts.upper_bound(last + reach), m_layouts.end());
}

// What follows the last line end is no line to the reader until there is something in it.
bool ChatLayout::isHidden(qsizetype line) const
{
    return line > 0 && line == m_text.lineCount() - 1 && m_text.lineStart(line) == m_text.length();
}

int ChatLayout::estimatedHeight(const StyleFormats::Extent& extent) const
{
    const double rows = std::ceil(static_cast<double>(extent.width) / std::max(m_width, 1));
    return extent.rowHeight * std::max(static_cast<int>(rows), 1);
}
