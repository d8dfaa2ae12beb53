#include "text/SmileySearch.h"

#include <utility>

SmileySearch::SmileySearch(QString text, qsizetype offset, smileys::Rows without)
    : m_text(std::move(text))
    , m_offset(offset)
    , m_without(without)
{
    m_first.fill(none);
    lookAt(0, m_text.size());
}

std::optional<SmileyHit> SmileySearch::first() const
{
    const auto* const found =
        std::ranges::find_if(m_first, [](qsizetype at) { return at != none; });
    if (found == m_first.end())
        return std::nullopt;
    const auto row = static_cast<std::size_t>(found - m_first.begin());
    return SmileyHit{&smileys::table[row], m_offset + *found};
}

bool SmileySearch::takeOut(const SmileyHit& hit)
{
    const qsizetype start = hit.offset - m_offset;
    const qsizetype length = hit.smiley->code.size();
    if (start < smileys::longestCode - 1)
        return false;
    m_text.remove(start, length);
    for (std::size_t row = 0; row < m_first.size(); ++row) {
        qsizetype& at = m_first[row];
        if (at == none)
            continue;
        if (at >= start + length)
            at -= length;
        else if (at + smileys::table[row].code.size() > start)
            at = indexOf(smileys::table[row], start); // it went with the hit, or a part of it
    }
    lookAt(start - (smileys::longestCode - 1), start);
    return true;
}

void SmileySearch::lookAt(qsizetype begin, qsizetype end)
{
    for (qsizetype at = begin; at < end; ++at) {
        for (const quint8 row : smileys::rowsBeginningWith(m_text[at])) {
            qsizetype& first = m_first[row];
            if ((first == none || first > at) && !m_without[row] &&
                smileys::table[row].standsAt(m_text, at))
                first = at;
        }
    }
}

qsizetype SmileySearch::indexOf(const Smiley& smiley, qsizetype from) const
{
    for (qsizetype at = from; at < m_text.size(); ++at) {
        if (smiley.standsAt(m_text, at))
            return at;
    }
    return none;
}
