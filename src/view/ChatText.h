#pragma once

#include "view/PackedText.h"

#include <memory>
#include <span>
#include <unordered_map>
#include <vector>

// The text of a chat view: lines with runs of attributes. A position counts a line end as one
// character, an offset as two (CR LF); there is always at least one line. Changes at the end cost
// what they change, reading a line costs its length, and finding it is a binary search. Whole lines
// that come at the end again are kept once, also when more lines follow them the next time.
class ChatText final
{
public:
    // Numbers in an AttributeTables.
    struct Attributes
    {
        quint16 style = 0;
        quint16 picture = 0; // 1 + number of the picture that each character of the run is

        bool operator==(const Attributes&) const = default;
    };

    struct Run
    {
        int start = 0; // it ends where the next one starts
        Attributes attributes;
    };

    struct Line
    {
        QString text;
        std::vector<Run> runs; // starts within the line; never empty

        int runEnd(size_t index) const
        {
            return index + 1 < runs.size() ? runs[index + 1].start : static_cast<int>(text.size());
        }
    };

    struct Piece
    {
        QStringView text;
        Attributes attributes;
    };

    struct Change
    {
        qsizetype position = 0;
        qsizetype removed = 0; // characters
        qsizetype added = 0;
        qsizetype line = 0; // the first one that has changed
        qsizetype removedLines = 0;
        qsizetype addedLines = 0;

        qsizetype movedPosition(qsizetype before) const;
        qsizetype movedLine(qsizetype before) const;
    };

    ChatText();
    ChatText(ChatText&&) = default; // a copy would have its blocks in common with the other

    qsizetype length() const { return m_length; }
    qsizetype lineCount() const { return m_lineCount; }
    qsizetype offsetLength() const { return m_length + m_lineCount - 1; }

    // A position between CR and LF does not exist: such an offset is the one before the CR.
    qsizetype positionOf(qsizetype offset) const;
    qsizetype offsetOf(qsizetype position) const { return position + lineAt(position); }

    qsizetype lineAt(qsizetype position) const;
    qsizetype lineStart(qsizetype line) const;
    qsizetype lineEnd(qsizetype line) const; // the position before its line end

    // The memory that all of it takes.
    qsizetype bytes() const;

    // Line ends are LF.
    QString text(qsizetype from, qsizetype to) const;
    QString lineText(qsizetype line) const { return text(lineStart(line), lineEnd(line)); }
    Line line(qsizetype line) const;

    // Calls a function with each run of a line, in order: its attributes, and the text of it as
    // PackedText::read gives it.
    template<typename Read>
    void readRuns(qsizetype line, Read read) const
    {
        const Chunk& chunk = m_chunks[chunkAtLine(line)];
        int at = static_cast<int>(lineStart(line) - chunk.firstPosition);
        const auto end = static_cast<int>(lineEnd(line) - chunk.firstPosition);
        if (chunk.runs.empty())
            return;
        for (size_t run = chunk.runAt(at); at < end; ++run) {
            const bool isLast = run + 1 == chunk.runs.size() || chunk.runs[run + 1].start >= end;
            const int runEnd = isLast ? end : chunk.runs[run + 1].start;
            chunk.block->text.read(at, runEnd - at, [&](const auto* text, qsizetype length) {
                read(chunk.runs[run].attributes, text, length);
            });
            at = runEnd;
        }
    }

    // The text's line ends are LF.
    Change replace(qsizetype position, qsizetype length, QStringView text, Attributes attributes);
    // Puts pieces without line ends, and a line end, behind everything.
    Change appendLine(std::span<const Piece> pieces, Attributes lineEnd);

private:
    // Lines and where they start.
    struct Block
    {
        PackedText text;
        std::vector<int> lineStarts{0};

        void append(QStringView lines);
    };

    struct Chunk
    {
        std::shared_ptr<Block> block = std::make_shared<Block>();
        // The part of the block that this is, from its start on: all of it, if it is not shared.
        // It ends with a line end, except in the last chunk, which is never shared.
        int size = 0;
        int lines = 1;
        bool isShared = false;
        std::vector<Run> runs;
        qsizetype firstPosition = 0;
        qsizetype firstLine = 0;

        std::span<const int> lineStarts() const
        {
            return {block->lineStarts.data(), static_cast<size_t>(lines)};
        }
        bool isFull() const;
        void replace(int at, int length, QStringView text, Attributes attributes);
        void replaceLines(int at, int length, QStringView text);
        void replaceRuns(int at, int length, int added, Attributes attributes);
        void append(const Chunk& chunk);
        void append(QStringView piece, Attributes attributes);
        void endLine(Attributes attributes);
        Chunk splitOff(size_t line);
        size_t runAt(int position) const;
        void seal();
        void own();
        void blockChanged();
    };

    size_t chunkAtPosition(qsizetype position) const;
    size_t chunkAtLine(qsizetype line) const;
    void append(QStringView text, Attributes attributes);
    void startChunk();
    QStringView worthSharing(QStringView text) const;
    void appendShared(QStringView lines, Attributes attributes);
    std::shared_ptr<Block> sharedBlock(QStringView lines);
    void joinChunks(size_t first, size_t last, qsizetype from, qsizetype to);
    void splitChunk(size_t index);
    void renumber(size_t from);

    std::vector<Chunk> m_chunks;
    std::unordered_multimap<size_t, std::weak_ptr<Block>> m_sharedBlocks; // by their first line
    qsizetype m_length = 0;
    qsizetype m_lineCount = 1;
};
