#include "text/CheckRTF.h"

#include "platform/Handlers.h"
#include "view/RichTextBox.h"

#include <QScopedValueRollback>

#include <vector>

namespace {

smileys::Rows rowsStandingFirst(QStringView text)
{
    smileys::Rows rows;
    if (text.isEmpty())
        return rows;
    for (const quint8 row : smileys::rowsBeginningWith(text.front()))
        rows[row] = smileys::table[row].standsAt(text, 0);
    return rows;
}

// Whether a code or picture is where it can change which codes stand first.
bool touchesStart(const SmileyHit& hit)
{
    return hit.offset < smileys::longestCode;
}

} // namespace

void SmileyPass::CheckRTF()
{
    if (m_running)
        return; // the pass under way goes on with what this change has brought
    const QScopedValueRollback running(m_running, true);
    bool done = false;
    skipRest([&] {
        replaceAll();
        done = true;
    });
    if (!done)
        m_unchanged = 0; // there is no telling what is left
}

// A pass inside a pass begins after each code taken out and ends before its picture is put in. So
// the pictures that wait are put in from the last to the first, each when no code is left. They
// wait in a list and not in nested calls: one long line can hold thousands.
void SmileyPass::replaceAll()
{
    std::vector<SmileyHit> waiting;
    noteChange();
    SmileySearch found = search();
    for (;;) {
        if (const auto hit = found.first()) {
            waiting.push_back(*hit);
            takeOut(*hit);
            if (noteChange() != hit->offset || touchesStart(*hit) || !found.takeOut(*hit))
                found = search();
            continue;
        }
        m_unchanged = m_view.TextLength();
        if (waiting.empty())
            return;
        const SmileyHit last = waiting.back();
        waiting.pop_back();
        putIn(last);
        // A picture is in no code. It can only part one, which matters to one that stands first.
        if (noteChange() != last.offset || touchesStart(last))
            found = search();
    }
}

// Where the view has changed; the rest of the pass is meant to see no changes but its own.
qsizetype SmileyPass::noteChange()
{
    const qsizetype from = m_view.takeChangedFrom();
    m_unchanged = std::min(m_unchanged, from);
    return from;
}

SmileySearch SmileyPass::search()
{
    // A code that stood first may have been left alone anywhere. It can only be free now when the
    // change was so near to the start that all but the first character is searched.
    if (m_unchanged < smileys::longestCode)
        m_standFirst = rowsStandingFirst(m_view.TextRange(0, smileys::longestCode));
    const qsizetype from = std::max<qsizetype>(1, m_unchanged - (smileys::longestCode - 1));
    const qsizetype length = m_view.TextLength() - from;
    return {length > 0 ? m_view.TextRange(from, length) : QString(), from, m_standFirst};
}

void SmileyPass::takeOut(const SmileyHit& hit)
{
    m_view.setSelStart(hit.offset);
    m_view.setSelLength(hit.smiley->code.size());
    m_view.setSelText({});
}

void SmileyPass::putIn(const SmileyHit& hit)
{
    m_view.setSelStart(hit.offset);
    m_view.InsertPicture({hit.smiley->code, hit.smiley->picture(), hit.smiley->size});
}
