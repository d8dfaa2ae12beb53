#include "text/TextWriter.h"

#include "common/ControlCharacters.h"
#include "common/SessionVariables.h"
#include "common/TextHelpers.h"
#include "text/ColorTables.h"
#include "view/RichTextBox.h"

#include <algorithm>

namespace {

using namespace Qt::StringLiterals;

constexpr auto lineEnd = "\r\n"_L1;

enum class Dialect { View, Raw };

bool hasFormatting(const QString& text)
{
    return std::ranges::any_of(text, [](QChar c) {
        return c == strColor || c == strReverse || c == strUnderline || c == strBold;
    });
}

void toEnd(RichTextBox& view)
{
    view.setSelStart(view.TextLength());
}

void stylesOff(RichTextBox& view)
{
    view.setSelBold(false);
    view.setSelUnderline(false);
    view.setSelStrikeThru(false);
}

// One walk over a line that ends in its closing blank.
class Walk final
{
public:
    Walk(RichTextBox& view, const QString& text, Dialect dialect)
        : m_view(view)
        , m_text(text)
        , m_dialect(dialect)
    {
    }

    void run()
    {
        for (m_at = 0; m_at < m_text.size();) {
            const QChar c = m_text[m_at];
            if (c == strBold || (c == secondBold && m_dialect == Dialect::View))
                toggle([this] { m_view.setSelBold(!m_view.SelBold()); });
            else if (c == strUnderline)
                toggle([this] { m_view.setSelUnderline(!m_view.SelUnderline()); });
            else if (c == strReverse)
                toggle([this] { m_view.setSelStrikeThru(!m_view.SelStrikeThru()); });
            else if (c == strColor) {
                flush();
                if (!readColor())
                    return;
            } else
                ++m_at;
        }
        flush();
    }

private:
    template<typename Change>
    void toggle(Change change)
    {
        flush();
        change();
        m_runStart = ++m_at;
    }

    void flush()
    {
        toEnd(m_view);
        m_view.setSelText(m_text.mid(m_runStart, m_at - m_runStart));
    }

    // False when the line ends here, without its closing blank.
    bool readColor()
    {
        const QStringView text(m_text);
        const qsizetype first = m_at + 1;
        qsizetype next = first;
        while (next < text.size() && IsColorSpec(text.sliced(first, next - first)))
            ++next;
        const qsizetype cut = next - 1; // the last one was one too many
        const QStringView spec = text.sliced(first, cut - first);
        // Behind a comma stands a background, which views do not have.
        const QStringView number = spec.left(spec.indexOf(u','));
        m_view.setSelColor(spec.isEmpty() ? DefaultTextColor : ColorToRGB(number.toInt()));
        m_runStart = m_at = cut;
        return m_dialect == Dialect::Raw || cut < text.size() - 1;
    }

    RichTextBox& m_view;
    const QString& m_text;
    Dialect m_dialect;
    qsizetype m_at = 0;
    qsizetype m_runStart = 0;
};

void writeFormatted(RichTextBox& view, const QString& text, Dialect dialect)
{
    Walk(view, text, dialect).run();
    stylesOff(view);
    toEnd(view);
    view.setSelText(lineEnd);
}

} // namespace

void TextWriter::WriteView(RichTextBox& view, const QString& text) const
{
    const bool formatted = hasFormatting(text);
    const QString line = formatted ? QString(text + u' ') : QString(text + u' ' + lineEnd);
    if (formatted) [[maybe_unused]]
        const Int16 length(line.size());

    const EditBlock block(view);
    view.setSelFontSize(m_variables.FontSize);
    view.setSelFontName(beforeNul(m_variables.FontName));
    toEnd(view);
    view.setSelColor(DefaultTextColor);
    stylesOff(view);
    if (formatted)
        writeFormatted(view, line, Dialect::View);
    else
        view.setSelText(line);
}

void TextWriter::WriteRaw(RichTextBox& view, const QString& text)
{
    const EditBlock block(view);
    toEnd(view);
    view.setSelColor(DefaultTextColor);
    stylesOff(view);
    writeFormatted(view, text + u' ', Dialect::Raw);
}
