#pragma once

#include "view/AttributeTables.h"
#include "view/ChatText.h"

// A line of a chat view with the code of each picture in its place, as a person writes and hears
// it.
class CodedLine final
{
public:
    CodedLine(const ChatText::Line& line, const AttributeTables& tables);

    const QString& text() const { return m_text; }
    // Between a place in the text and the column in the view. The inside of a code belongs to its
    // picture.
    int columnOf(qsizetype place) const;
    qsizetype placeOf(int column) const;

private:
    struct Picture
    {
        int column = 0;
        qsizetype place = 0;
        qsizetype length = 0;
    };

    QString m_text;
    std::vector<Picture> m_pictures;
};
