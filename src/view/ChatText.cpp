#include "view/ChatText.h"

#include <algorithm>

namespace {

// A chunk is what an edit in the middle of the text has to move.
constexpr size_t linesPerChunk = 256;
constexpr qsizetype charactersPerChunk = 1 << 15;

} // namespace

qsizetype ChatText::Change::movedPosition(qsizetype before) const
{
    if (before <= position)
        return before;
    return before < position + removed ? position : before - removed + added;
}

qsizetype ChatText::Change::movedLine(qsizetype before) const
{
    if (before <= line)
        return before;
    return std::max(before - removedLines, line) + addedLines;
}

ChatText::ChatText()
    : m_chunks(1)
{
}

qsizetype ChatText::positionOf(qsizetype offset) const
{
    if (offset >= offsetLength())
        return m_length;
    offset = std::max<qsizetype>(offset, 0);
    const auto chunk = std::prev(std::upper_bound(
        m_chunks.begin(), m_chunks.end(), offset, [](qsizetype value, const Chunk& candidate) {
            return value < candidate.firstPosition + candidate.firstLine;
        }));
    const qsizetype inChunk = offset - chunk->firstPosition - chunk->firstLine;
    size_t from = 0; // the last line that starts at or before the offset
    size_t to = chunk->lineStarts.size() - 1;
    while (from < to) {
        const size_t middle = (from + to + 1) / 2;
        if (chunk->lineStarts[middle] + static_cast<qsizetype>(middle) <= inChunk)
            from = middle;
        else
            to = middle - 1;
    }
    const qsizetype line = chunk->firstLine + static_cast<qsizetype>(from);
    return std::min(offset - line, lineEnd(line));
}

qsizetype ChatText::lineAt(qsizetype position) const
{
    const Chunk& chunk = m_chunks[chunkAtPosition(position)];
    const qsizetype inChunk = position - chunk.firstPosition;
    if (chunk.lineStarts.back() <= inChunk)
        return chunk.firstLine + static_cast<qsizetype>(chunk.lineStarts.size()) - 1;
    const auto next = std::upper_bound(chunk.lineStarts.begin(), chunk.lineStarts.end(), inChunk);
    return chunk.firstLine + (next - chunk.lineStarts.begin()) - 1;
}

qsizetype ChatText::lineStart(qsizetype line) const
{
    const Chunk& chunk = m_chunks[chunkAtLine(line)];
    return chunk.firstPosition + chunk.lineStarts[line - chunk.firstLine];
}

qsizetype ChatText::lineEnd(qsizetype line) const
{
    return line + 1 < m_lineCount ? lineStart(line + 1) - 1 : m_length;
}

QString ChatText::text(qsizetype from, qsizetype to) const
{
    QString result;
    for (size_t i = chunkAtPosition(from); i < m_chunks.size() && from < to; ++i) {
        const Chunk& chunk = m_chunks[i];
        const qsizetype inChunk = from - chunk.firstPosition;
        const qsizetype length = std::min(chunk.text.size() - inChunk, to - from);
        QString part = chunk.text.mid(inChunk, length);
        if (result.isNull() && length == to - from)
            return part;
        result += part;
        from += length;
    }
    return result;
}

ChatText::Line ChatText::line(qsizetype line) const
{
    const Chunk& chunk = m_chunks[chunkAtLine(line)];
    const auto start = static_cast<int>(lineStart(line) - chunk.firstPosition);
    const auto end = static_cast<int>(lineEnd(line) - chunk.firstPosition);
    Line result{chunk.text.mid(start, end - start), {}};
    if (chunk.runs.empty()) {
        result.runs.push_back({});
        return result;
    }
    size_t run = chunk.runAt(start);
    result.runs.push_back({0, chunk.runs[run].attributes});
    for (++run; run < chunk.runs.size() && chunk.runs[run].start < end; ++run)
        result.runs.push_back({chunk.runs[run].start - start, chunk.runs[run].attributes});
    return result;
}

ChatText::Change ChatText::replace(qsizetype position, qsizetype length, QStringView text,
                                   Attributes attributes)
{
    Change change{position, length, text.size(), lineAt(position), 0, 0};
    change.removedLines = length == 0 ? 0 : lineAt(position + length) - change.line;
    change.addedLines = text.count(u'\n');
    if (length == 0 && position == m_length) {
        append(text, attributes);
    } else {
        const size_t first = chunkAtPosition(position);
        const size_t last = length == 0 ? first : chunkAtPosition(position + length);
        if (first < last) {
            joinChunks(first, last, position, position + length);
            length = 0;
        }
        Chunk& chunk = m_chunks[first];
        chunk.replace(static_cast<int>(position - chunk.firstPosition), static_cast<int>(length),
                      text, attributes);
        splitChunk(first);
        renumber(first + 1);
    }
    m_length += change.added - change.removed;
    m_lineCount += change.addedLines - change.removedLines;
    return change;
}

ChatText::Change ChatText::appendLine(std::span<const Piece> pieces, Attributes lineEnd)
{
    Change change{m_length, 0, 1, m_lineCount - 1, 0, 1};
    if (m_chunks.back().isFull())
        startChunk();
    Chunk& chunk = m_chunks.back();
    for (const Piece& piece : pieces) {
        chunk.append(piece.text, piece.attributes);
        change.added += piece.text.size();
    }
    chunk.append(u"\n", lineEnd);
    chunk.lineStarts.push_back(static_cast<int>(chunk.text.size()));
    m_length += change.added;
    ++m_lineCount;
    return change;
}

size_t ChatText::chunkAtPosition(qsizetype position) const
{
    if (m_chunks.back().firstPosition <= position)
        return m_chunks.size() - 1;
    const auto next = std::upper_bound(
        m_chunks.begin(), m_chunks.end(), position,
        [](qsizetype value, const Chunk& chunk) { return value < chunk.firstPosition; });
    return static_cast<size_t>(next - m_chunks.begin()) - 1;
}

size_t ChatText::chunkAtLine(qsizetype line) const
{
    if (m_chunks.back().firstLine <= line)
        return m_chunks.size() - 1;
    const auto next = std::upper_bound(
        m_chunks.begin(), m_chunks.end(), line,
        [](qsizetype value, const Chunk& chunk) { return value < chunk.firstLine; });
    return static_cast<size_t>(next - m_chunks.begin()) - 1;
}

void ChatText::append(QStringView text, Attributes attributes)
{
    while (!text.isEmpty()) {
        if (m_chunks.back().isFull())
            startChunk();
        Chunk& chunk = m_chunks.back();
        const qsizetype lineEnd = text.indexOf(u'\n');
        const qsizetype length = lineEnd < 0 ? text.size() : lineEnd + 1;
        chunk.replace(static_cast<int>(chunk.text.size()), 0, text.first(length), attributes);
        text = text.sliced(length);
    }
}

void ChatText::startChunk()
{
    Chunk& full = m_chunks.back();
    full.lineStarts.pop_back(); // the empty line behind it is the first one of the new chunk
    full.text.squeeze();
    full.lineStarts.shrink_to_fit();
    full.runs.shrink_to_fit();
    m_chunks.emplace_back();
    renumber(m_chunks.size() - 1);
}

void ChatText::joinChunks(size_t first, size_t last, qsizetype from, qsizetype to)
{
    Chunk& head = m_chunks[first];
    Chunk& tail = m_chunks[last];
    const auto cut = static_cast<int>(from - head.firstPosition);
    head.replace(cut, static_cast<int>(head.text.size()) - cut, {}, {});
    tail.replace(0, static_cast<int>(to - tail.firstPosition), {}, {});
    head.append(tail);
    const auto begin = m_chunks.begin() + static_cast<std::ptrdiff_t>(first) + 1;
    m_chunks.erase(begin, m_chunks.begin() + static_cast<std::ptrdiff_t>(last) + 1);
}

void ChatText::splitChunk(size_t index)
{
    while (m_chunks[index].lineStarts.size() > 2 * linesPerChunk) {
        Chunk rest = m_chunks[index].splitOff(linesPerChunk);
        m_chunks.insert(m_chunks.begin() + static_cast<std::ptrdiff_t>(index) + 1, std::move(rest));
        ++index;
    }
}

void ChatText::renumber(size_t from)
{
    for (size_t i = std::max<size_t>(from, 1); i < m_chunks.size(); ++i) {
        const Chunk& before = m_chunks[i - 1];
        m_chunks[i].firstPosition = before.firstPosition + before.text.size();
        m_chunks[i].firstLine = before.firstLine + static_cast<qsizetype>(before.lineStarts.size());
    }
}

bool ChatText::Chunk::isFull() const
{
    const bool atLineStart = lineStarts.back() == text.size();
    return atLineStart && (lineStarts.size() > linesPerChunk || text.size() > charactersPerChunk);
}

void ChatText::Chunk::replace(int at, int length, QStringView inserted, Attributes attributes)
{
    replaceRuns(at, length, static_cast<int>(inserted.size()), attributes);
    replaceLines(at, length, inserted);
    text.replace(at, length, inserted);
}

void ChatText::Chunk::replaceLines(int at, int length, QStringView inserted)
{
    const auto first = std::upper_bound(lineStarts.begin(), lineStarts.end(), at);
    const auto last = std::upper_bound(first, lineStarts.end(), at + length);
    const int moved = static_cast<int>(inserted.size()) - length;
    for (auto start = last; start != lineStarts.end(); ++start)
        *start += moved;
    auto place = lineStarts.erase(first, last);
    for (qsizetype end = inserted.indexOf(u'\n'); end >= 0; end = inserted.indexOf(u'\n', end + 1))
        place = lineStarts.insert(place, at + static_cast<int>(end) + 1) + 1;
}

void ChatText::Chunk::replaceRuns(int at, int length, int added, Attributes attributes)
{
    const auto startsBefore = [](const Run& run, int position) { return run.start < position; };
    auto first = std::lower_bound(runs.begin(), runs.end(), at, startsBefore);
    const auto last = std::lower_bound(first, runs.end(), at + length, startsBefore);
    // What stands behind the replaced part keeps its attributes, also when its run is cut.
    const bool hasRest = at + length < text.size();
    const bool cutsRun = hasRest && (last == runs.end() || last->start != at + length);
    const Attributes rest = cutsRun ? std::prev(last)->attributes : Attributes{};
    for (auto run = last; run != runs.end(); ++run)
        run->start += added - length;
    first = runs.erase(first, last);
    if (cutsRun)
        first = runs.insert(first, {at + added, rest});
    if (added > 0)
        first = runs.insert(first, {at, attributes});
    // At most the inserted run and its two neighbours have become equal.
    const auto from = first == runs.begin() ? first : std::prev(first);
    const auto to = from + std::min<std::ptrdiff_t>(runs.end() - from, 4);
    const auto kept = std::unique(
        from, to, [](const Run& a, const Run& b) { return a.attributes == b.attributes; });
    runs.erase(kept, to);
}

void ChatText::Chunk::append(QStringView piece, Attributes attributes)
{
    if (piece.isEmpty())
        return;
    if (runs.empty() || runs.back().attributes != attributes)
        runs.push_back({static_cast<int>(text.size()), attributes});
    text.append(piece);
}

void ChatText::Chunk::append(const Chunk& chunk)
{
    const auto moved = static_cast<int>(text.size());
    // The first line of the other one goes on where the last one here ends.
    for (size_t i = 1; i < chunk.lineStarts.size(); ++i)
        lineStarts.push_back(chunk.lineStarts[i] + moved);
    for (const Run& run : chunk.runs)
        runs.push_back({run.start + moved, run.attributes});
    text.append(chunk.text);
}

ChatText::Chunk ChatText::Chunk::splitOff(size_t line)
{
    Chunk rest;
    const int start = lineStarts[line];
    rest.text = text;
    rest.text.replace(0, start, {});
    rest.runs.push_back({0, runs[runAt(start)].attributes});
    for (const Run& run : runs) {
        if (run.start > start)
            rest.runs.push_back({run.start - start, run.attributes});
    }
    rest.lineStarts.clear();
    for (size_t i = line; i < lineStarts.size(); ++i)
        rest.lineStarts.push_back(lineStarts[i] - start);
    lineStarts.resize(line);
    text.replace(start, text.size() - start, {});
    std::erase_if(runs, [start](const Run& run) { return run.start >= start; });
    return rest;
}

size_t ChatText::Chunk::runAt(int position) const
{
    const auto next = std::upper_bound(runs.begin(), runs.end(), position,
                                       [](int value, const Run& run) { return value < run.start; });
    return static_cast<size_t>(next - runs.begin()) - 1;
}
