#pragma once

#include "view/ChatText.h"

#include <algorithm>

// What the reader of a chat view has selected, and his caret. Positions are those of a ChatText.
class ReaderSelection final
{
public:
    enum class Unit { Character, Word, Line };

    explicit ReaderSelection(const ChatText& text);

    qsizetype anchor() const { return m_anchor; }
    qsizetype caret() const { return m_caret; }
    qsizetype start() const { return std::min(m_anchor, m_caret); }
    qsizetype end() const { return std::max(m_anchor, m_caret); }
    bool isEmpty() const { return m_anchor == m_caret; }

    void select(qsizetype anchor, qsizetype caret);
    // A press of the mouse, whole units from then on, and its moving with the button held.
    void begin(qsizetype position, Unit unit);
    void dragTo(qsizetype position);
    void textChanged(const ChatText::Change& change);

private:
    struct Range
    {
        qsizetype start = 0;
        qsizetype end = 0;
    };

    Range unitAt(qsizetype position) const;

    const ChatText& m_text;
    qsizetype m_anchor = 0;
    qsizetype m_caret = 0;
    Unit m_unit = Unit::Character;
    Range m_first; // the unit that the mouse was pressed on
};

// The next character and the one before, as a reader sees them: none is parted. A line end is one.
qsizetype nextCharacter(const ChatText& text, qsizetype position);
qsizetype previousCharacter(const ChatText& text, qsizetype position);
// The word boundaries around a position, within its line.
qsizetype wordStart(const ChatText& text, qsizetype position);
qsizetype wordEnd(const ChatText& text, qsizetype position);
// Where the next word starts, and the one before; over line ends too.
qsizetype nextWord(const ChatText& text, qsizetype position);
qsizetype previousWord(const ChatText& text, qsizetype position);
