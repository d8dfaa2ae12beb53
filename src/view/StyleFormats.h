#pragma once

#include "view/AttributeTables.h"
#include "view/ChatText.h"

#include <QPalette>
#include <QTextLayout>

#include <array>
#include <map>
#include <vector>

// The fonts and colours that the styles of a view come to, zoomed, and cheap guesses of how much
// room text in them takes.
class StyleFormats final
{
public:
    struct Extent
    {
        float width = 0; // of the whole line in one row
        int rowHeight = 0;
    };

    StyleFormats(const AttributeTables& tables, const QFont& font, const QPalette& palette,
                 double zoom = 1);

    const AttributeTables& tables() const { return m_tables; }
    const QFont& font(quint16 style) const;
    // What stands behind text that could not be read without it; invalid for all other.
    const QColor& ground(quint16 style) const;
    QList<QTextLayout::FormatRange> formats(const ChatText::Line& line) const;
    // From a table of character widths, without shaping.
    Extent estimate(const ChatText& text, qsizetype line) const;

    const InlinePicture& picture(ChatText::Attributes attributes) const;
    static int rowHeight(qreal ascent, qreal descent);

private:
    struct Face
    {
        QFont font;
        std::array<int, 256> advances{}; // in 64ths of a pixel
        int wideAdvance = 0;
        int rowHeight = 0;
    };
    struct Entry
    {
        const Face* face = nullptr;
        QTextCharFormat format;
        QColor ground;
    };

    template<typename Character>
    static int widthOf(const Face& face, const Character* text, qsizetype length);
    const Entry& entry(quint16 style) const;
    const Face& face(const TextStyle& style) const;
    QTextCharFormat format(ChatText::Attributes attributes) const;
    QColor shownColor(QRgb color) const;

    const AttributeTables& m_tables;
    double m_zoom;
    QFont m_font;
    QColor m_text;
    QColor m_base;
    bool m_darkBase;
    // Filled as styles are first seen.
    mutable std::map<QFont, Face> m_faces;
    mutable std::vector<Entry> m_entries;
    mutable std::map<quint16, InlinePicture> m_zoomedPictures;
};
