#include "render/CheckRTF.h"

#include "platform/Handlers.h"
#include "platform/RichTextBox.h"

#include <QScopedValueRollback>

#include <vector>

namespace {

bool standsAt(QStringView text, qsizetype offset, const Smiley& smiley)
{
    return text.sliced(offset).startsWith(smiley.code);
}

smileys::Rows rowsStandingFirst(QStringView text)
{
    smileys::Rows rows;
    if (text.isEmpty())
        return rows;
    for (const quint8 row : smileys::rowsBeginningWith(text.front()))
        rows[row] = standsAt(text, 0, smileys::table[row]);
    return rows;
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
    std::vector<Hit> waiting;
    for (;;) {
        m_unchanged = std::min(m_unchanged, m_view.takeChangedFrom());
        if (const auto hit = find()) {
            waiting.push_back(*hit);
            takeOut(waiting.back());
            continue;
        }
        m_unchanged = m_view.TextLength();
        m_stoodFirst = m_standFirst;
        if (waiting.empty())
            return;
        const Hit last = waiting.back();
        waiting.pop_back();
        putIn(last);
    }
}

// The first occurrence of the first code of the table that has one and does not stand first.
std::optional<SmileyPass::Hit> SmileyPass::find()
{
    if (m_unchanged < smileys::longestCode) {
        m_standFirst = rowsStandingFirst(m_view.TextRange(0, smileys::longestCode));
        if ((m_stoodFirst & ~m_standFirst).any())
            m_unchanged = 0; // one that was left alone may stand anywhere
    }
    const qsizetype from = std::max<qsizetype>(1, m_unchanged - (smileys::longestCode - 1));
    const qsizetype length = m_view.TextLength() - from;
    if (length <= 0)
        return std::nullopt;
    const QString text = m_view.TextRange(from, length);
    std::optional<Hit> hit;
    std::size_t best = smileys::table.size();
    for (qsizetype at = 0; at < text.size() && best > 0; ++at) {
        for (const quint8 row : smileys::rowsBeginningWith(text[at])) {
            if (row >= best)
                break;
            if (m_standFirst[row] || !standsAt(text, at, smileys::table[row]))
                continue;
            best = row;
            hit = Hit{&smileys::table[row], from + at};
            break;
        }
    }
    return hit;
}

void SmileyPass::takeOut(const Hit& hit)
{
    m_view.setSelStart(hit.offset);
    m_view.setSelLength(hit.smiley->code.size());
    m_view.setSelText({});
}

void SmileyPass::putIn(const Hit& hit)
{
    m_view.setSelStart(hit.offset);
    m_view.InsertPicture({hit.smiley->code, hit.smiley->picture(), hit.smiley->size});
}
