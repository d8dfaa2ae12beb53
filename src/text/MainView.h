#pragma once

#include "text/TextWriter.h"

// The conversation of the main window: where the session and the program itself write.
class MainView final
{
public:
    MainView(const TextWriter& writer, RichTextBox& view)
        : m_writer(writer)
        , m_view(view)
    {
    }

    RichTextBox& view() const { return m_view; }
    void write(const QString& text) const { m_writer.WriteView(m_view, text); }

private:
    const TextWriter& m_writer;
    RichTextBox& m_view;
};
