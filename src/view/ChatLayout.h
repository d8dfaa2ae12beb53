#pragma once

#include "view/ChatText.h"
#include "view/LineHeights.h"
#include "view/LineLayout.h"
#include "view/StyleFormats.h"

#include <map>
#include <memory>
#include <vector>

// Heights of all lines of a chat view, in logical pixels: exact for those that have been laid out
// at this width, estimated for the others.
class ChatLayout final
{
public:
    ChatLayout(const ChatText& text, std::unique_ptr<StyleFormats> formats);

    const ChatText& text() const { return m_text; }

    // Costs nothing while the changed line has not been measured.
    void textChanged(const ChatText::Change& change);
    void setWidth(int width);
    void setFormats(std::unique_ptr<StyleFormats> formats);
    // Estimates the lines that have come since the last call. Everything below needs it.
    void update();

    // Lays the line out if it is not yet, which corrects its height.
    const LineLayout& line(qsizetype line);
    int exactHeight(qsizetype line);

    qint64 top(qsizetype line) const { return m_heights.top(line); }
    qint64 height() const { return m_heights.total(); }
    qsizetype lineAt(qint64 y) const { return m_heights.lineAt(y); }

    // Forgets layouts far from those lines.
    void keepNear(qsizetype first, qsizetype last);

private:
    bool isHidden(qsizetype line) const;
    int estimatedHeight(const StyleFormats::Extent& extent) const;

    const ChatText& m_text;
    std::unique_ptr<StyleFormats> m_formats;
    int m_width = 0;
    std::vector<StyleFormats::Extent> m_extents; // of the measured lines
    LineHeights m_heights;
    std::map<qsizetype, std::unique_ptr<LineLayout>> m_layouts;
};
