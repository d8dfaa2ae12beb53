#pragma once

#include "view/AttributeTables.h"
#include "view/ChatText.h"

#include <vector>

// The text of a chat view as a screen reader has it: each picture is its code, and offsets count
// the characters of that. Lines are read when somebody asks, so it costs nothing while nobody does.
class SpokenText final
{
public:
    SpokenText(const ChatText& text, const AttributeTables& tables);

    void textChanged(const ChatText::Change& change);

    qsizetype length() const;
    qsizetype offsetOf(qsizetype position) const;
    // The picture itself for an offset inside its code.
    qsizetype positionOf(qsizetype offset) const;
    QString text(qsizetype fromOffset, qsizetype toOffset) const;

private:
    struct Picture
    {
        qsizetype position = 0;
        qsizetype offset = 0;
        QString code;
    };

    void readUpTo(qsizetype line) const;

    const ChatText& m_text;
    const AttributeTables& m_tables;
    mutable std::vector<Picture> m_pictures;
    mutable qsizetype m_linesRead = 0;
};
