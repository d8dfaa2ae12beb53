#pragma once

#include <QString>

#include <functional>

class LineSink;
class RichTextBox;
class TextWriter;

// Writes what another chatter said to a view: actions, the version question, ordinary lines.
class IncomingText final
{
public:
    // In what a room's view and a private view differ.
    struct Manner
    {
        QLatin1StringView versionReply;
        bool headerColorEnds; // otherwise the header's colour runs on into the message
    };
    static const Manner room;
    static const Manner privateTalk;

    // Hears of each line that has just been written, what was said without its header.
    using Written =
        std::function<void(RichTextBox& view, const QString& nick, const QString& text)>;

    IncomingText(const Manner& manner, const TextWriter& writer, LineSink& server,
                 Written written = {})
        : m_manner(manner)
        , m_writer(writer)
        , m_server(server)
        , m_written(std::move(written))
    {
    }

    void PutText(RichTextBox& view, const QString& nick, const QString& text) const;

private:
    void tellWritten(RichTextBox& view, const QString& nick, const QString& text) const;

    const Manner& m_manner;
    const TextWriter& m_writer;
    LineSink& m_server;
    Written m_written;
};
