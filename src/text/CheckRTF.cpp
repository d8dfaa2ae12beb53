#include "text/CheckRTF.h"

#include "platform/Handlers.h"
#include "text/SmileyOutcome.h"
#include "view/RichTextBox.h"

#include <QScopedValueRollback>

#include <algorithm>
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

constexpr qsizetype lineEndLength = 2;
constexpr qsizetype longLine = 64; // characters

std::pair<qsizetype, qsizetype> wordAround(QStringView text, qsizetype at)
{
    const qsizetype end = text.indexOf(u' ', at);
    return {text.lastIndexOf(u' ', at) + 1, end < 0 ? text.size() : end};
}

bool isInOneRun(const FormattedLine& line, qsizetype start, qsizetype end)
{
    return std::ranges::none_of(line.runs, [=](const FormattedLine::Run& run) {
        return run.start > start && run.start < end;
    });
}

// Whether a code or picture is where it can change which codes stand first.
bool touchesStart(const SmileyHit& hit)
{
    return hit.offset < smileys::longestCode;
}

} // namespace

void SmileyPass::keepUp()
{
    m_view.onChange([this] { CheckRTF(); });
    m_view.onLine([this](const FormattedLine& line) { return foresee(line); });
}

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

// A line without codes stays as it is: what is not in all of it is in no beginning of it. And a
// code that stands alone between blanks goes as it would anywhere, since no code has a blank in it
// that its neighbours could become part of; it must have come in one piece.
std::optional<LineOutcome> SmileyPass::foresee(const FormattedLine& line)
{
    const qsizetype length = m_view.TextLength();
    if (m_running || m_unchanged != length || length < smileys::longestCode || m_standFirst.any())
        return std::nullopt;
    LineOutcome outcome;
    qsizetype added = line.text.size() + lineEndLength;
    if (const qsizetype at = smileys::findCode(line.text, 0); at >= 0) {
        const auto [start, end] = wordAround(line.text, at);
        const Smiley* smiley = smileys::ownPicture(line.text.sliced(start, end - start));
        // A picture in the last run of all leaves the insertion point behind itself.
        if (line.endsInLastRun || !smiley || !isInOneRun(line, start, end) ||
            smileys::findCode(line.text, end) >= 0)
            return std::nullopt;
        outcome = {start, end - start, &smileys::inlinePicture(*smiley)};
        added += 1 - outcome.length;
    }
    m_unchanged = length + added;
    return outcome;
}

// A pass inside a pass begins after each code taken out and ends before its picture is put in. So
// the pictures that wait are put in from the last to the first, each when no code is left. They
// wait in a list and not in nested calls: one long line can hold thousands.
void SmileyPass::replaceAll()
{
    std::vector<SmileyHit> waiting;
    noteChange();
    SmileySearch found = search();
    if (replaceAtOnce(found))
        return;
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

// A long line is not taken apart and put together step by step: each step moves the rest of it.
bool SmileyPass::replaceAtOnce(const SmileySearch& found)
{
    if (found.text().size() < longLine || !found.first())
        return false;
    const bool isNearStart = found.offset() < smileys::longestCode;
    const qsizetype offset = isNearStart ? 0 : found.offset();
    const QString text = isNearStart ? m_view.TextRange(0, m_view.TextLength()) : found.text();
    const auto outcome =
        outcomeOf(text, m_standFirst, isNearStart ? Begins::WithView : Begins::Anywhere);
    if (!outcome || !m_view.rearrange(offset + outcome->from, outcome->parts))
        return false;
    m_view.setSelStart(offset + outcome->caret);
    noteChange();
    m_unchanged = m_view.TextLength();
    return true;
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
    m_view.InsertPicture(smileys::inlinePicture(*hit.smiley));
}
