#include "text/SmileyOutcome.h"

#include <algorithm>
#include <bit>
#include <queue>

namespace {

using namespace Qt::StringLiterals;

constexpr int none = -1;

// Which of many places are taken, and how many of them before one.
class Places final
{
public:
    explicit Places(int count)
        : m_sums(static_cast<std::size_t>(count) + 1)
    {
        for (std::size_t i = 1; i < m_sums.size(); ++i)
            m_sums[i] = static_cast<int>(i & (~i + 1)); // all are taken
    }

    void free(int place)
    {
        for (auto i = static_cast<std::size_t>(place) + 1; i < m_sums.size(); i += i & (~i + 1))
            --m_sums[i];
    }

    int before(int place) const
    {
        int sum = 0;
        for (auto i = static_cast<std::size_t>(place); i > 0; i -= i & (~i + 1))
            sum += m_sums[i];
        return sum;
    }

    // The place that so many stand before.
    int at(int number) const
    {
        std::size_t place = 0;
        for (std::size_t step = std::bit_floor(m_sums.size()); step > 0; step /= 2) {
            if (place + step < m_sums.size() && m_sums[place + step] <= number) {
                place += step;
                number -= m_sums[place];
            }
        }
        return static_cast<int>(place);
    }

private:
    std::vector<int> m_sums; // a binary indexed tree
};

struct Hit
{
    int offset = 0; // when it was taken out
    std::size_t row = 0;
};

// A text that codes are taken out of: always the first one of the first row that occurs, never one
// that begins before a certain place.
class Remains final
{
public:
    Remains(QStringView text, int from, smileys::Rows without)
        : m_text(text)
        , m_from(from)
        , m_without(without)
        , m_next(text.size())
        , m_previous(text.size())
        , m_left(static_cast<int>(text.size()))
    {
        const auto size = static_cast<int>(text.size());
        for (int at = 0; at < size; ++at) {
            m_next[at] = at + 1 < size ? at + 1 : none;
            m_previous[at] = at - 1;
        }
        for (int at = from; at < size; ++at)
            noteCodesAt(at);
    }

    // Nothing when another code comes to stand first in a text that is looked at from its start:
    // with it, other rows are looked for.
    std::optional<std::vector<Hit>> takeAllOut(bool fromStart)
    {
        std::vector<Hit> hits;
        for (std::size_t row = 0; row < smileys::table.size();) {
            const int at = firstOf(row);
            if (at == none) {
                ++row;
                continue;
            }
            hits.push_back({m_left.before(at), row});
            row = takeOut(at, row); // an earlier one may have come about
            if (fromStart && hits.back().offset < smileys::longestCode && standFirst() != m_without)
                return std::nullopt;
        }
        return hits;
    }

    // What is left, in order.
    int first() const { return m_from > 0 ? m_next[m_from - 1] : m_first; }
    int next(int at) const { return m_next[at]; }

private:
    using Queue = std::priority_queue<int, std::vector<int>, std::greater<>>;

    bool standsAt(int at, std::size_t row) const
    {
        for (const char c : smileys::table[row].code) {
            if (at == none || m_text[at] != QLatin1Char(c))
                return false;
            at = m_next[at];
        }
        return true;
    }

    smileys::Rows standFirst() const
    {
        smileys::Rows rows;
        for (const quint8 row : smileys::rowsBeginningWith(m_text.front()))
            rows[row] = standsAt(0, row);
        return rows;
    }

    // Gives the first row noted.
    std::size_t noteCodesAt(int at)
    {
        std::size_t first = smileys::table.size();
        if (at < m_from)
            return first;
        for (const quint8 row : smileys::rowsBeginningWith(m_text[at])) {
            if (m_without[row] || !standsAt(at, row))
                continue;
            m_places[row].push(at);
            first = std::min<std::size_t>(first, row);
        }
        return first;
    }

    // Places noted earlier may have gone since.
    int firstOf(std::size_t row)
    {
        Queue& places = m_places[row];
        while (!places.empty() && (isGone(places.top()) || !standsAt(places.top(), row)))
            places.pop();
        return places.empty() ? none : places.top();
    }

    bool isGone(int at) const { return m_next[at] == gone; }

    std::size_t takeOut(int at, std::size_t row)
    {
        int behind = at;
        const int before = m_previous[at];
        for (qsizetype i = 0; i < smileys::table[row].code.size(); ++i) {
            m_left.free(behind);
            behind = std::exchange(m_next[behind], gone);
        }
        (before == none ? m_first : m_next[before]) = behind;
        if (behind != none)
            m_previous[behind] = before;
        int place = before;
        for (qsizetype i = 1; i < smileys::longestCode && place != none; ++i) {
            row = std::min(row, noteCodesAt(place));
            place = m_previous[place];
        }
        return row;
    }

    static constexpr int gone = -2;

    QStringView m_text;
    int m_from;
    smileys::Rows m_without;
    std::vector<int> m_next;
    std::vector<int> m_previous;
    Places m_left;
    int m_first = 0;
    std::array<Queue, smileys::table.size()> m_places;
};

// Where pictures stand in the end that are put in one after the other, from the last hit to the
// first, each at the offset of its hit.
std::vector<int> finalPlaces(const std::vector<Hit>& hits, int left, bool hasLineEnd)
{
    std::vector<int> offsets;
    offsets.reserve(hits.size());
    int length = left;
    int lineEnd = hasLineEnd ? left - 2 : left;
    for (auto hit = hits.rbegin(); hit != hits.rend(); ++hit) {
        int offset = std::min(hit->offset, length);
        if (hasLineEnd && offset == lineEnd + 1)
            --offset; // its two characters are not parted
        if (offset <= lineEnd)
            ++lineEnd;
        offsets.push_back(offset);
        ++length;
    }
    Places places(length);
    for (auto offset = offsets.rbegin(); offset != offsets.rend(); ++offset) {
        *offset = places.at(*offset);
        places.free(*offset);
    }
    return offsets;
}

// Whether a picture comes to stand in a code that stands first in the view: with that code gone,
// others of its row would be free.
bool partsFirst(const std::vector<Hit>& hits, smileys::Rows standFirst)
{
    qsizetype length = 0;
    for (std::size_t row = 0; row < smileys::table.size(); ++row) {
        if (standFirst[row])
            length = std::max(length, smileys::table[row].code.size());
    }
    return std::ranges::any_of(hits, [=](const Hit& hit) { return hit.offset < length; });
}

} // namespace

std::optional<SmileyOutcome> outcomeOf(QStringView text, smileys::Rows without, Begins begins)
{
    const bool fromStart = begins == Begins::WithView;
    const bool hasLineEnd = text.endsWith("\r\n"_L1);
    const QStringView line = hasLineEnd ? text.chopped(2) : text;
    const qsizetype lineStart = std::max(line.lastIndexOf(u'\n'), line.lastIndexOf(u'\r')) + 1;
    // The first character of all is no part of a code that is taken out.
    const auto start = static_cast<int>(std::max<qsizetype>(lineStart, fromStart ? 1 : 0));
    if (start > text.size() || smileys::findCode(text.first(start), fromStart ? 1 : 0) >= 0)
        return std::nullopt;

    Remains remains(text, start, without);
    std::optional<std::vector<Hit>> hits = remains.takeAllOut(fromStart);
    if (!hits || hits->empty() || (fromStart && partsFirst(*hits, without)))
        return std::nullopt;
    auto left = static_cast<int>(text.size()) - start;
    for (Hit& hit : *hits) {
        left -= static_cast<int>(smileys::table[hit.row].code.size());
        hit.offset -= start;
    }
    const std::vector<int> places = finalPlaces(*hits, left, hasLineEnd);

    std::vector<const Smiley*> pictures(static_cast<std::size_t>(left) + places.size());
    for (std::size_t i = 0; i < places.size(); ++i)
        pictures[places[i]] = &smileys::table[(*hits)[hits->size() - 1 - i].row];
    SmileyOutcome outcome{start, {}, start + places.back() + 1};
    int at = remains.first();
    for (const Smiley* picture : pictures) {
        if (picture) {
            outcome.parts.push_back({0, 0, &smileys::inlinePicture(*picture)});
            continue;
        }
        const bool goesOn = !outcome.parts.empty() && !outcome.parts.back().picture &&
                            outcome.parts.back().start + outcome.parts.back().length == at - start;
        if (goesOn)
            ++outcome.parts.back().length;
        else
            outcome.parts.push_back({at - start, 1, nullptr});
        at = remains.next(at);
    }
    return outcome;
}
