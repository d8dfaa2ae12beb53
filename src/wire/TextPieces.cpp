#include "wire/TextPieces.h"

#include "common/ControlCharacters.h"
#include "wire/Charset.h"

#include <QTextBoundaryFinder>

#include <array>

namespace {

using namespace Qt::StringLiterals;

constexpr QChar hexColor{4};
constexpr QChar plain{15};
// Styles that a code switches on and off.
constexpr std::array<QChar, 6> switches{strBold,     QChar{0x11}, strReverse,
                                        QChar{0x1D}, QChar{0x1E}, strUnderline};

bool isDigit(QStringView text, qsizetype at)
{
    return at < text.size() && text[at] >= u'0' && text[at] <= u'9';
}

bool isHexDigit(QStringView text, qsizetype at)
{
    if (at >= text.size())
        return false;
    const char16_t c = QChar(text[at]).toLower().unicode();
    return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f');
}

// A colour of a code: two digits at most, or all six of the hexadecimal kind.
qsizetype numberLength(QStringView text, qsizetype at, bool hex)
{
    qsizetype length = 0;
    if (!hex) {
        while (length < 2 && isDigit(text, at + length))
            ++length;
        return length;
    }
    while (length < 6 && isHexDigit(text, at + length))
        ++length;
    return length == 6 ? 6 : 0;
}

// What is in force at a place of a text.
class Style final
{
public:
    // Takes the code at this place, if it is one; how long it is.
    qsizetype take(QStringView text, qsizetype at)
    {
        const QChar c = text[at];
        if (c == strColor || c == hexColor)
            return takeColor(text, at, c);
        if (c == plain) {
            *this = Style();
            return 1;
        }
        for (std::size_t i = 0; i < switches.size(); ++i) {
            if (switches[i] == c) {
                m_on[i] = !m_on[i];
                return 1;
            }
        }
        return 0;
    }

    // The codes that bring this style about, so that the text may follow at once.
    QString codes(QStringView text) const
    {
        QString codes;
        for (std::size_t i = 0; i < switches.size(); ++i) {
            if (m_on[i])
                codes += switches[i];
        }
        const bool hasBack = !m_background.number.isEmpty();
        const bool together = hasBack && m_background.code == m_foreground.code;
        if (hasBack && !together) // a background comes with a foreground of its own kind only
            codes += m_background.code + m_background.number + u',' + m_background.number;
        if (!m_foreground.number.isEmpty())
            codes += m_foreground.code + m_foreground.number;
        if (together)
            codes += u',' + m_background.number;
        else if (!m_foreground.number.isEmpty() && text.startsWith(u','))
            codes += QString(2, strBold); // so that no background begins here
        return codes;
    }

private:
    struct Color
    {
        QChar code;
        QString number; // empty: none is set
    };

    qsizetype takeColor(QStringView text, qsizetype at, QChar code)
    {
        const bool hex = code == hexColor;
        const qsizetype front = numberLength(text, at + 1, hex);
        m_foreground = {code, padded(text.mid(at + 1, front))};
        if (front == 0) {
            m_background = {};
            return 1;
        }
        const qsizetype comma = at + 1 + front;
        const qsizetype back =
            comma < text.size() && text[comma] == u',' ? numberLength(text, comma + 1, hex) : 0;
        if (back == 0)
            return 1 + front;
        m_background = {code, padded(text.mid(comma + 1, back))};
        return 1 + front + 1 + back;
    }

    // Two digits always: a digit of the text may follow.
    static QString padded(QStringView number)
    {
        return number.size() == 1 ? u'0' + number.toString() : number.toString();
    }

    std::array<bool, switches.size()> m_on{};
    Color m_foreground;
    Color m_background;
};

class Cutter final
{
public:
    Cutter(const QString& text, const Charset& charset)
        : m_text(text)
        , m_charset(charset)
        , m_characters(QTextBoundaryFinder::Grapheme, text)
    {
    }

    enum class At { Blanks, Characters };

    // Where the piece that begins here ends: what fits into so many bytes, at least one character.
    qsizetype cut(qsizetype from, qsizetype bytes, At place)
    {
        qsizetype end = from;
        qsizetype blank = from; // the last good place
        Style style;
        while (end < m_text.size()) {
            qsizetype next = end + style.take(m_text, end);
            if (next == end)
                next = characterEnd(end);
            const qsizetype size = m_charset.sizeOf(QStringView(m_text).mid(end, next - end));
            if (size > bytes)
                return blank > from ? blank : end > from ? end : part(from, bytes);
            bytes -= size;
            end = next;
            if (place == At::Blanks && end < m_text.size() && m_text[end] == u' ' &&
                m_text[end - 1] != u' ')
                blank = end;
        }
        return end;
    }

private:
    qsizetype characterEnd(qsizetype from)
    {
        m_characters.setPosition(from);
        const qsizetype next = m_characters.toNextBoundary();
        return next < 0 ? m_text.size() : next;
    }

    // One character with more marks on it than fit: between two of them.
    qsizetype part(qsizetype from, qsizetype bytes) const
    {
        qsizetype end = from;
        do {
            const qsizetype next = end + (m_text[end].isHighSurrogate() ? 2 : 1);
            bytes -= m_charset.sizeOf(QStringView(m_text).mid(end, next - end));
            if (bytes < 0 && end > from)
                return end;
            end = std::min(next, m_text.size());
        } while (bytes > 0 && end < m_text.size());
        return end;
    }

    const QString& m_text;
    const Charset& m_charset;
    QTextBoundaryFinder m_characters;
};

} // namespace

QStringList piecesOf(const QString& text, qsizetype bytes, const Charset& charset)
{
    QStringList pieces;
    Cutter cutter(text, charset);
    Style style;
    for (qsizetype from = 0; from < text.size();) {
        const QString codes = style.codes(QStringView(text).mid(from));
        const qsizetype end = cutter.cut(from, bytes - codes.size(), Cutter::At::Blanks);
        pieces += codes + text.mid(from, end - from);
        while (from < end)
            from += std::max<qsizetype>(style.take(text, from), 1);
    }
    return pieces;
}

qsizetype fittingLength(const QString& text, qsizetype bytes, const Charset& charset)
{
    if (charset.sizeOf(text) <= bytes)
        return text.size();
    return Cutter(text, charset).cut(0, bytes, Cutter::At::Characters);
}
