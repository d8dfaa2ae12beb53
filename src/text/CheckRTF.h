#pragma once

#include "text/SmileySearch.h"

#include <optional>

struct FormattedLine;
struct LineOutcome;
class RichTextBox;

// Keeps the codes of one view's text turned into pictures. The outcome is that of the plain pass:
//
//   for every code in the order of the table, if its first occurrence in the whole text is not at
//   offset 0: take it out, then put its picture in at the same offset; and after every change of
//   the text, also those two, do all of this from the start
//
// so a code that stands first in the view stays text, and so does every later one like it, and a
// picture goes to the offset its code had, whatever was replaced in between. The cost is that of
// what has changed, not of the view:
//
// - When a pass has ended, no code is left in the text except those that stand first in it.
// - So a code that can be replaced reaches behind the lowest offset changed since then, or it is
//   one that stood first and no longer does. Only in the second case is the whole text searched.
//
// One for each view, as long as the view: it asks the view where it has changed.
class SmileyPass final
{
public:
    explicit SmileyPass(RichTextBox& view)
        : m_view(view)
    {
    }

    // The view itself asks for what follows from now on, and must not be changed once this is gone.
    void keepUp();

    // To be called at every change of the view, also at those that it makes itself. A failure of
    // the view ends the pass in silence.
    void CheckRTF();

    // What inserting a line at the end of the view, run by run, and this pass after each of them
    // would come to; nothing for the few lines for which that takes more than a look. It is the
    // view's to bring just that about, and no call of CheckRTF is due for it then.
    std::optional<LineOutcome> foresee(const FormattedLine& line);

private:
    void replaceAll();
    bool replaceAtOnce(const SmileySearch& found);
    qsizetype noteChange();
    SmileySearch search();
    void takeOut(const SmileyHit& hit);
    void putIn(const SmileyHit& hit);

    RichTextBox& m_view;
    // Up to here the text is as it was when the last pass ended.
    qsizetype m_unchanged = 0;
    smileys::Rows m_standFirst;
    bool m_running = false;
};
