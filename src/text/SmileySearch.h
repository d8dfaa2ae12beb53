#pragma once

#include "text/SmileyTable.h"

#include <array>
#include <optional>

// Where a code of the table stands in a view.
struct SmileyHit
{
    const Smiley* smiley;
    qsizetype offset;
};

// The end of a view's text, from an offset on, with the first occurrence of every code in it.
class SmileySearch final
{
public:
    // The codes of some rows are not looked for.
    SmileySearch(QString text, qsizetype offset, smileys::Rows without);

    // The first code of the table that occurs, where it occurs first.
    std::optional<SmileyHit> first() const;

    const QString& text() const { return m_text; }
    qsizetype offset() const { return m_offset; }

    // Follows a hit that is taken out of the text. False: too near to the start of this text to
    // tell what its neighbours make now.
    bool takeOut(const SmileyHit& hit);

private:
    static constexpr qsizetype none = -1;

    // Notes the codes that begin at one of some places, before the occurrence known so far.
    void lookAt(qsizetype begin, qsizetype end);
    qsizetype indexOf(const Smiley& smiley, qsizetype from) const;

    QString m_text;
    qsizetype m_offset;
    smileys::Rows m_without;
    std::array<qsizetype, smileys::table.size()> m_first; // places in m_text, in rows
};
