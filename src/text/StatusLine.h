#pragma once

#include <QString>

class RichTextBox;
class TextWriter;

// Writes notes of the program itself to the main view. Nothing is reported when that fails.
class StatusLine final
{
public:
    StatusLine(const TextWriter& writer, RichTextBox& mainView)
        : m_writer(writer)
        , m_mainView(mainView)
    {
    }

    void WriteStatus(const QString& text, int color) const;

private:
    const TextWriter& m_writer;
    RichTextBox& m_mainView;
};
