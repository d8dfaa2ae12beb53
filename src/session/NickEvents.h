#pragma once

#include <QString>

class ChannelTable;
class QueryTable;
class TextWriter;

// What a nick's change or leaving means for the rooms and the private conversations.
class NickEvents final
{
public:
    NickEvents(const ChannelTable& channels, const QueryTable& queries, const TextWriter& writer)
        : m_channels(channels)
        , m_queries(queries)
        , m_writer(writer)
    {
    }

    // A conversation follows its peer only while the room's list has the old nick.
    void NickChanged(const QString& oldNick, const QString& newNick) const;
    void NickQuit(const QString& nick, const QString& reason) const;

private:
    void renameQuery(const QString& oldNick, const QString& newNick) const;

    const ChannelTable& m_channels;
    const QueryTable& m_queries;
    const TextWriter& m_writer;
};
