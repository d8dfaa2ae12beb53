#include "view/CodedLine.h"

#include <algorithm>

CodedLine::CodedLine(const ChatText::Line& line, const AttributeTables& tables)
{
    for (size_t i = 0; i < line.runs.size(); ++i) {
        const ChatText::Run& run = line.runs[i];
        const int end = line.runEnd(i);
        if (run.attributes.picture == 0) {
            m_text += QStringView(line.text).sliced(run.start, end - run.start);
            continue;
        }
        const QString& code = tables.pictures.at(run.attributes.picture - 1).code;
        for (int column = run.start; column < end; ++column) {
            m_pictures.push_back({column, m_text.size(), code.size()});
            m_text += code;
        }
    }
}

int CodedLine::columnOf(qsizetype place) const
{
    const auto next =
        std::upper_bound(m_pictures.begin(), m_pictures.end(), place,
                         [](qsizetype value, const Picture& one) { return value < one.place; });
    if (next == m_pictures.begin())
        return static_cast<int>(place);
    const Picture& before = *std::prev(next);
    const qsizetype behind = place - before.place - before.length;
    return behind < 0 ? before.column : before.column + 1 + static_cast<int>(behind);
}

qsizetype CodedLine::placeOf(int column) const
{
    const auto next =
        std::lower_bound(m_pictures.begin(), m_pictures.end(), column,
                         [](const Picture& one, int value) { return one.column < value; });
    if (next == m_pictures.begin())
        return column;
    const Picture& before = *std::prev(next);
    return before.place + before.length + (column - before.column - 1);
}
