#include "text/TextWriter.h"

#include "common/ControlCharacters.h"
#include "common/SessionVariables.h"
#include "common/TextHelpers.h"
#include "text/ColorTables.h"
#include "view/RichTextBox.h"

#include <QVarLengthArray>

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

void setLook(RichTextBox& view, const FormattedLine::Look& look)
{
    view.setSelColor(look.color);
    view.setSelBold(look.bold);
    view.setSelUnderline(look.underline);
    view.setSelStrikeThru(look.strikeThru);
}

// What a view takes for a line end, or for the end of all of it.
bool endsText(QChar c)
{
    return c == u'\n' || c == u'\r' || c == QChar(u'\0');
}

// A line taken apart: what is left of it without its control characters, and the runs of that.
class Runs final
{
public:
    // The line's closing blank is not in the text yet.
    Runs(QStringView text, Dialect dialect)
        : m_given(text)
        , m_dialect(dialect)
    {
        m_text.reserve(text.size() + 1);
        m_runs.append({0, m_look});
        if (walk())
            m_text.append(u' ');
    }

    bool isOneLine() const { return m_isOneLine; }
    FormattedLine line() const
    {
        FormattedLine line{QStringView(m_text.constData(), m_text.size()),
                           {m_runs.constData(), static_cast<std::size_t>(m_runs.size())},
                           {}};
        line.lineEnd.color = m_look.color;
        return line;
    }

private:
    // False when the line ends before its closing blank.
    bool walk()
    {
        while (true) {
            const qsizetype from = m_at;
            while (m_at < m_given.size() && m_given[m_at] > strUnderline)
                ++m_at;
            m_text.append(m_given.data() + from, m_at - from);
            if (m_at == m_given.size())
                return true;
            if (!takeControl(m_given[m_at]))
                return false;
        }
    }

    bool takeControl(QChar c)
    {
        if (c == strColor)
            return readColor();
        if (c == strBold || (c == secondBold && m_dialect == Dialect::View)) {
            toggle(m_look.bold);
        } else if (c == strUnderline) {
            toggle(m_look.underline);
        } else if (c == strReverse) {
            toggle(m_look.strikeThru);
        } else {
            m_isOneLine &= !endsText(c);
            m_text.append(c);
            ++m_at;
        }
        return true;
    }

    void toggle(bool& style)
    {
        style = !style;
        startRun();
        ++m_at;
    }

    // An empty run leaves nothing behind.
    void startRun()
    {
        if (m_runs.last().start == m_text.size())
            m_runs.last().look = m_look;
        else
            m_runs.append({m_text.size(), m_look});
    }

    bool readColor()
    {
        const qsizetype first = m_at + 1;
        qsizetype next = first;
        while (next <= m_given.size() && IsColorSpec(m_given.sliced(first, next - first)))
            ++next;
        const qsizetype cut = next - 1; // the last one was one too many
        const QStringView spec = m_given.sliced(first, cut - first);
        // Behind a comma stands a background, which views do not have.
        const QStringView number = spec.left(spec.indexOf(u','));
        m_look.color = spec.isEmpty() ? DefaultTextColor : ColorToRGB(number.toInt());
        startRun();
        m_at = cut;
        return m_dialect == Dialect::Raw || cut < m_given.size();
    }

    QStringView m_given;
    Dialect m_dialect;
    FormattedLine::Look m_look{DefaultTextColor, false, false, false};
    QVarLengthArray<QChar, 600> m_text;
    QVarLengthArray<FormattedLine::Run, 16> m_runs;
    qsizetype m_at = 0;
    bool m_isOneLine = true;
};

// One change for each run, so that what a code split over two of them makes is seen as it comes.
void insertRunByRun(RichTextBox& view, const FormattedLine& line)
{
    for (std::size_t i = 0; i < line.runs.size(); ++i) {
        const qsizetype start = line.runs[i].start;
        setLook(view, line.runs[i].look);
        toEnd(view);
        view.setSelText(line.text.sliced(start, line.runEnd(i) - start).toString());
    }
    setLook(view, line.lineEnd);
    toEnd(view);
    view.setSelText(lineEnd);
}

void append(RichTextBox& view, const Runs& runs)
{
    const FormattedLine line = runs.line();
    if (runs.isOneLine() && view.appendLine(line))
        setLook(view, line.lineEnd);
    else
        insertRunByRun(view, line);
}

} // namespace

void TextWriter::WriteView(RichTextBox& view, const QString& text) const
{
    write(view, text);
    if (m_copy)
        m_copy(view, text);
}

QString TextWriter::plainText(const QString& text)
{
    const QString line = text + u' ';
    const Runs runs(line, Dialect::View);
    QString plain = runs.line().text.toString();
    for (QChar& c : plain) {
        if (c.category() == QChar::Other_Control || c == QChar::LineSeparator ||
            c == QChar::ParagraphSeparator)
            c = u' ';
    }
    return plain.trimmed();
}

void TextWriter::write(RichTextBox& view, const QString& text) const
{
    const bool formatted = hasFormatting(text);
    if (formatted) [[maybe_unused]]
        const Int16 length(text.size() + 1);

    const EditBlock block(view);
    view.setSelFontSize(m_variables.FontSize);
    view.setSelFontName(beforeNul(m_variables.FontName));
    if (formatted) {
        append(view, Runs(text, Dialect::View));
        return;
    }
    const QString line = text + u' ';
    const FormattedLine::Run whole{0, {DefaultTextColor, false, false, false}};
    if (std::ranges::none_of(line, endsText) &&
        view.appendLine({line, {&whole, 1}, whole.look, true})) {
        setLook(view, whole.look);
        return;
    }
    setLook(view, whole.look);
    toEnd(view);
    view.setSelText(line + lineEnd);
}

void TextWriter::WriteRaw(RichTextBox& view, const QString& text)
{
    const EditBlock block(view);
    append(view, Runs(text, Dialect::Raw));
}
