#pragma once

#include "text/SmileyTable.h"
#include "view/RichTextBox.h"

#include <vector>

// What the whole pass makes of the end of a view, worked out aside: in one go and in little more
// than linear time, where doing it step by step moves the rest of the line at every step.
struct SmileyOutcome
{
    qsizetype from = 0;                      // in the text given; what stands before it stays
    std::vector<RichTextBox::Stretch> parts; // all of what follows
    qsizetype caret = 0;                     // the insertion point afterwards
};

// The text goes to the end of the view and has no line ends in it, except one at its very end and
// some before the first code; it begins anywhere in the view or is all of it. The codes of some
// rows, which stand first in the view, are not looked for. Nothing where there is no code, where
// there are line ends elsewhere, or where what stands first would change.
enum class Begins { Anywhere, WithView };
std::optional<SmileyOutcome> outcomeOf(QStringView text, smileys::Rows without, Begins begins);
