#include "view/ChatText.h"

#include <QHashFunctions>

#include <algorithm>
#include <unordered_set>

namespace {

// A chunk is what an edit in the middle of the text has to move.
constexpr size_t linesPerChunk = 256;
constexpr qsizetype charactersPerChunk = 1 << 15;
constexpr qsizetype leastShared = 256; // characters

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
    const std::span lineStarts = chunk->lineStarts();
    size_t to = lineStarts.size() - 1;
    while (from < to) {
        const size_t middle = (from + to + 1) / 2;
        if (lineStarts[middle] + static_cast<qsizetype>(middle) <= inChunk)
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
    const std::span lineStarts = chunk.lineStarts();
    if (lineStarts.back() <= inChunk)
        return chunk.firstLine + chunk.lines - 1;
    const auto next = std::upper_bound(lineStarts.begin(), lineStarts.end(), inChunk);
    return chunk.firstLine + (next - lineStarts.begin()) - 1;
}

qsizetype ChatText::lineStart(qsizetype line) const
{
    const Chunk& chunk = m_chunks[chunkAtLine(line)];
    return chunk.firstPosition + chunk.block->lineStarts[line - chunk.firstLine];
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
        const qsizetype length = std::min(chunk.size - inChunk, to - from);
        QString part = chunk.block->text.mid(inChunk, length);
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
    Line result{chunk.block->text.mid(start, end - start), {}};
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
    chunk.endLine(lineEnd);
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
        const QStringView lines = worthSharing(text);
        if (!lines.isEmpty()) {
            appendShared(lines, attributes);
            text = text.sliced(lines.size());
            continue;
        }
        Chunk& chunk = m_chunks.back();
        const qsizetype lineEnd = text.indexOf(u'\n');
        const qsizetype length = lineEnd < 0 ? text.size() : lineEnd + 1;
        chunk.replace(chunk.size, 0, text.first(length), attributes);
        text = text.sliced(length);
    }
}

// Many whole lines that come at once, such as a conversation that is put into another one.
QStringView ChatText::worthSharing(QStringView text) const
{
    const Chunk& last = m_chunks.back();
    if (text.size() < leastShared || last.lineStarts().back() != last.size)
        return {};
    const qsizetype most = std::min(text.size(), charactersPerChunk);
    const QStringView lines = text.first(text.first(most).lastIndexOf(u'\n') + 1);
    const bool isOneLine = lines.indexOf(u'\n') == lines.size() - 1;
    return isOneLine || lines.size() < leastShared ? QStringView() : lines;
}

void ChatText::appendShared(QStringView lines, Attributes attributes)
{
    if (m_chunks.back().size > 0)
        startChunk();
    Chunk& chunk = m_chunks.back();
    chunk.block = sharedBlock(lines);
    chunk.size = static_cast<int>(lines.size());
    chunk.lines = static_cast<int>(lines.count(u'\n'));
    chunk.isShared = true;
    chunk.runs.push_back({0, attributes});
    m_chunks.emplace_back();
    renumber(m_chunks.size() - 1);
}

// One that begins with these lines. One that they begin with is continued: the chunks that have a
// part of it do not see what follows their part.
std::shared_ptr<ChatText::Block> ChatText::sharedBlock(QStringView lines)
{
    const size_t key = qHash(lines.first(lines.indexOf(u'\n')));
    auto [known, end] = m_sharedBlocks.equal_range(key);
    while (known != end) {
        std::shared_ptr<Block> block = known->second.lock();
        if (!block) {
            known = m_sharedBlocks.erase(known);
            continue;
        }
        const qsizetype common = std::min(block->text.size(), lines.size());
        if (block->text.beginsWith(lines.first(common))) {
            block->append(lines.sliced(common));
            return block;
        }
        ++known;
    }
    auto block = std::make_shared<Block>();
    block->lineStarts.pop_back();
    block->append(lines);
    m_sharedBlocks.emplace(key, block);
    return block;
}

void ChatText::startChunk()
{
    m_chunks.back().seal();
    m_chunks.emplace_back();
    renumber(m_chunks.size() - 1);
}

void ChatText::joinChunks(size_t first, size_t last, qsizetype from, qsizetype to)
{
    Chunk& head = m_chunks[first];
    Chunk& tail = m_chunks[last];
    const auto cut = static_cast<int>(from - head.firstPosition);
    head.replace(cut, head.size - cut, {}, {});
    tail.replace(0, static_cast<int>(to - tail.firstPosition), {}, {});
    head.append(tail);
    const auto begin = m_chunks.begin() + static_cast<std::ptrdiff_t>(first) + 1;
    m_chunks.erase(begin, m_chunks.begin() + static_cast<std::ptrdiff_t>(last) + 1);
}

void ChatText::splitChunk(size_t index)
{
    while (m_chunks[index].lineStarts().size() > 2 * linesPerChunk) {
        Chunk rest = m_chunks[index].splitOff(linesPerChunk);
        m_chunks.insert(m_chunks.begin() + static_cast<std::ptrdiff_t>(index) + 1, std::move(rest));
        ++index;
    }
}

void ChatText::renumber(size_t from)
{
    for (size_t i = std::max<size_t>(from, 1); i < m_chunks.size(); ++i) {
        const Chunk& before = m_chunks[i - 1];
        m_chunks[i].firstPosition = before.firstPosition + before.size;
        m_chunks[i].firstLine = before.firstLine + before.lines;
    }
}

qsizetype ChatText::bytes() const
{
    std::unordered_set<const Block*> counted;
    auto bytes = static_cast<qsizetype>(m_chunks.capacity() * sizeof(Chunk) +
                                        m_sharedBlocks.size() * sizeof(std::weak_ptr<Block>));
    for (const Chunk& chunk : m_chunks) {
        bytes += static_cast<qsizetype>(chunk.runs.capacity() * sizeof(Run));
        if (!counted.insert(chunk.block.get()).second)
            continue;
        bytes += chunk.block->text.bytes();
        bytes += static_cast<qsizetype>(sizeof(Block) +
                                        chunk.block->lineStarts.capacity() * sizeof(int));
    }
    return bytes;
}

void ChatText::Block::append(QStringView lines)
{
    auto start = static_cast<int>(text.size());
    text.append(lines);
    for (const QStringView line : lines.tokenize(u'\n')) {
        if (start < text.size())
            lineStarts.push_back(start);
        start += static_cast<int>(line.size()) + 1;
    }
}

bool ChatText::Chunk::isFull() const
{
    const bool atLineStart = block->lineStarts.back() == size;
    return atLineStart && (block->lineStarts.size() > linesPerChunk || size > charactersPerChunk);
}

void ChatText::Chunk::replace(int at, int length, QStringView inserted, Attributes attributes)
{
    own();
    replaceRuns(at, length, static_cast<int>(inserted.size()), attributes);
    replaceLines(at, length, inserted);
    block->text.replace(at, length, inserted);
    blockChanged();
}

void ChatText::Chunk::replaceLines(int at, int length, QStringView inserted)
{
    std::vector<int>& lineStarts = block->lineStarts;
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
    const bool hasRest = at + length < size;
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
        runs.push_back({size, attributes});
    block->text.append(piece);
    size += static_cast<int>(piece.size());
}

void ChatText::Chunk::endLine(Attributes attributes)
{
    append(u"\n", attributes);
    block->lineStarts.push_back(size);
    ++lines;
}

void ChatText::Chunk::append(const Chunk& chunk)
{
    // The first line of the other one goes on where the last one here ends.
    for (const int start : chunk.lineStarts().subspan(1))
        block->lineStarts.push_back(start + size);
    for (const Run& run : chunk.runs)
        runs.push_back({run.start + size, run.attributes});
    block->text.append(chunk.block->text);
    blockChanged();
}

ChatText::Chunk ChatText::Chunk::splitOff(size_t line)
{
    Chunk rest;
    const int start = block->lineStarts[line];
    rest.block->text = block->text;
    rest.block->text.replace(0, start, {});
    rest.runs.push_back({0, runs[runAt(start)].attributes});
    for (const Run& run : runs) {
        if (run.start > start)
            rest.runs.push_back({run.start - start, run.attributes});
    }
    rest.block->lineStarts.clear();
    for (const int restStart : lineStarts().subspan(line))
        rest.block->lineStarts.push_back(restStart - start);
    rest.blockChanged();
    block->lineStarts.resize(line);
    block->text.replace(start, size - start, {});
    blockChanged();
    std::erase_if(runs, [start](const Run& run) { return run.start >= start; });
    return rest;
}

size_t ChatText::Chunk::runAt(int position) const
{
    const auto next = std::upper_bound(runs.begin(), runs.end(), position,
                                       [](int value, const Run& run) { return value < run.start; });
    return static_cast<size_t>(next - runs.begin()) - 1;
}

// The empty line behind the last line end is the first one of the next chunk.
void ChatText::Chunk::seal()
{
    block->lineStarts.pop_back();
    block->text.squeeze();
    block->lineStarts.shrink_to_fit();
    runs.shrink_to_fit();
    blockChanged();
}

void ChatText::Chunk::own()
{
    if (!isShared)
        return;
    auto part = std::make_shared<Block>(*block);
    part->text.replace(size, part->text.size() - size, {});
    part->lineStarts.resize(static_cast<size_t>(lines));
    block = std::move(part);
    isShared = false;
}

void ChatText::Chunk::blockChanged()
{
    size = static_cast<int>(block->text.size());
    lines = static_cast<int>(block->lineStarts.size());
}
