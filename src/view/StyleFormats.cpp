#include "view/StyleFormats.h"

#include "view/ReadableGround.h"

#include <QFontMetricsF>
#include <QPalette>

#include <algorithm>
#include <cmath>

namespace {

constexpr int rowSpacing = 2;
constexpr int advanceUnits = 64; // to a pixel
constexpr int readableLightness = 170;
constexpr QChar pictureStandIn = u'*'; // neutral for the direction of the text around it

// By how bright it looks: pure blue is as saturated as pure yellow, and dark.
bool isDark(const QColor& color)
{
    return qGray(color.rgb()) < 110;
}

} // namespace

StyleFormats::StyleFormats(const AttributeTables& tables, const QFont& font,
                           const QPalette& palette, double zoom)
    : m_tables(tables)
    , m_zoom(zoom)
    , m_font(font)
    , m_text(palette.color(QPalette::Text))
    , m_base(palette.color(QPalette::Base))
    , m_darkBase(isDark(m_base))
{
}

const QFont& StyleFormats::font(quint16 style) const
{
    return entry(style).face->font;
}

const QColor& StyleFormats::ground(quint16 style) const
{
    return entry(style).ground;
}

QList<QTextLayout::FormatRange> StyleFormats::formats(const ChatText::Line& line) const
{
    QList<QTextLayout::FormatRange> ranges;
    ranges.reserve(static_cast<qsizetype>(line.runs.size()));
    for (size_t i = 0; i < line.runs.size(); ++i) {
        const int start = line.runs[i].start;
        ranges.append({start, line.runEnd(i) - start, format(line.runs[i].attributes)});
    }
    return ranges;
}

StyleFormats::Extent StyleFormats::estimate(const ChatText& text, qsizetype line) const
{
    qint64 width = 0;
    int rowHeight = 0;
    text.readRuns(line,
                  [&](ChatText::Attributes attributes, const auto* characters, qsizetype length) {
                      const Face& face = *entry(attributes.style).face;
                      rowHeight = std::max(rowHeight, face.rowHeight);
                      if (attributes.picture == 0) {
                          width += widthOf(face, characters, length);
                          return;
                      }
                      const QSize size = picture(attributes).size;
                      width += size.width() * length * advanceUnits;
                      rowHeight = std::max(rowHeight, StyleFormats::rowHeight(size.height(), 0));
                  });
    if (rowHeight == 0)
        rowHeight = entry(text.line(line).runs.front().attributes.style).face->rowHeight;
    return {static_cast<float>(width) / advanceUnits, rowHeight};
}

template<typename Character>
int StyleFormats::widthOf(const Face& face, const Character* text, qsizetype length)
{
    int width = 0;
    for (qsizetype i = 0; i < length; ++i) {
        if constexpr (sizeof(Character) == 1)
            width += face.advances[text[i]];
        else
            width += text[i] < face.advances.size() ? face.advances[text[i]] : face.wideAdvance;
    }
    return width;
}

const InlinePicture& StyleFormats::picture(ChatText::Attributes attributes) const
{
    const InlinePicture& natural = m_tables.pictures.at(attributes.picture - 1);
    if (m_zoom == 1)
        return natural;
    const auto [place, isNew] = m_zoomedPictures.try_emplace(attributes.picture, natural);
    if (isNew)
        place->second.size = (QSizeF(natural.size) * m_zoom).toSize();
    return place->second;
}

int StyleFormats::rowHeight(qreal ascent, qreal descent)
{
    return static_cast<int>(std::ceil(ascent) + std::ceil(descent)) + rowSpacing;
}

const StyleFormats::Entry& StyleFormats::entry(quint16 style) const
{
    if (style >= m_entries.size())
        m_entries.resize(style + 1);
    Entry& entry = m_entries[style];
    if (entry.face)
        return entry;
    const TextStyle& look = m_tables.styles.at(style);
    entry.face = &face(look);
    entry.format.setFont(entry.face->font);
    const QColor color = shownColor(look.color);
    entry.format.setForeground(color);
    entry.ground = readableGround(color.rgb(), m_base.rgb());
    entry.format.setFontUnderline(look.underline);
    entry.format.setFontStrikeOut(look.strikeThru);
    return entry;
}

const StyleFormats::Face& StyleFormats::face(const TextStyle& style) const
{
    QFont font = m_font;
    if (!style.fontName.isEmpty())
        font.setFamilies({style.fontName});
    if (style.fontSize > 0)
        font.setPointSize(style.fontSize);
    if (m_zoom != 1)
        font.setPointSizeF(std::max(font.pointSizeF() * m_zoom, 1.0));
    font.setBold(style.bold);
    const auto [place, isNew] = m_faces.try_emplace(font);
    Face& face = place->second;
    if (!isNew)
        return face;
    const QFontMetricsF metrics(font);
    face.font = font;
    face.rowHeight = rowHeight(metrics.ascent(), metrics.descent());
    const auto inUnits = [](qreal width) { return qRound(width * advanceUnits); };
    face.wideAdvance = inUnits(metrics.horizontalAdvance(u'm'));
    for (size_t c = 0; c < face.advances.size(); ++c) {
        const QChar character(static_cast<char16_t>(c));
        face.advances[c] = inUnits(metrics.horizontalAdvance(character));
    }
    return face;
}

QTextCharFormat StyleFormats::format(ChatText::Attributes attributes) const
{
    const Entry& style = entry(attributes.style);
    if (attributes.picture == 0)
        return style.format;
    // The stand-in is not seen; its spacing makes it as wide as the picture.
    QFont font = style.face->font;
    font.setKerning(false);
    font.setLetterSpacing(QFont::AbsoluteSpacing,
                          picture(attributes).size.width() -
                              QFontMetricsF(font).horizontalAdvance(pictureStandIn));
    QTextCharFormat format;
    format.setFont(font);
    format.setForeground(Qt::transparent);
    return format;
}

// The colours of chat are made for a light base. On a dark one the dark ones are made light, and
// black, which is also the text that names no colour, becomes the palette's text.
QColor StyleFormats::shownColor(QRgb color) const
{
    const QColor named = QColor::fromRgb(color);
    if (!m_darkBase || !isDark(named))
        return named;
    if (named == QColor(Qt::black))
        return m_text;
    return QColor::fromHsl(named.hslHue(), named.hslSaturation(),
                           std::max(255 - named.lightness(), readableLightness));
}
