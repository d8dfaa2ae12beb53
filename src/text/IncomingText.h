#pragma once

#include <QString>

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

    IncomingText(const Manner& manner, const TextWriter& writer, LineSink& server)
        : m_manner(manner)
        , m_writer(writer)
        , m_server(server)
    {
    }

    void PutText(RichTextBox& view, const QString& nick, const QString& text) const;

private:
    const Manner& m_manner;
    const TextWriter& m_writer;
    LineSink& m_server;
};
