#pragma once

#include <QString>

#include <functional>
#include <utility>

class RichTextBox;
struct SessionVariables;

// Appends lines of chat text to views: bold, underline, strike-through (for reverse) and colour
// characters become runs of formatted text. A line starts in plain black in the current font and
// carries nothing over to the next. A line with such characters that is longer than 32,766 raises
// Overflow (6) before anything of it is written; a plain one has no limit.
class TextWriter final
{
public:
    explicit TextWriter(const SessionVariables& variables)
        : m_variables(variables)
    {
    }

    void WriteView(RichTextBox& view, const QString& text) const;

    // Told of every line when it stands in its view.
    using Copy = std::function<void(const RichTextBox& view, const QString& text)>;
    void setCopy(Copy copy) { m_copy = std::move(copy); }

    // What is left of a line without its codes, trimmed. Whatever else could end the line, ring a
    // bell or steer a terminal is a blank.
    static QString plainText(const QString& text);

    // The older writer: every line takes the formatted way, in the view's present font, and
    // character 15 is a character like any other.
    static void WriteRaw(RichTextBox& view, const QString& text);

private:
    void write(RichTextBox& view, const QString& text) const;

    const SessionVariables& m_variables;
    Copy m_copy;
};
