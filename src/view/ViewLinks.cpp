#include "view/ViewLinks.h"

#include "view/CodedLine.h"

#include <algorithm>

std::optional<ViewLinks::Link> ViewLinks::at(qsizetype position) const
{
    const qsizetype line = m_text.lineAt(position);
    for (const Link& link : inLines(line, line)) {
        if (position >= link.start && position < link.end)
            return link;
    }
    return std::nullopt;
}

QList<ViewLinks::Link> ViewLinks::inLines(qsizetype first, qsizetype last) const
{
    QList<Link> links;
    if (!m_ports.find)
        return links;
    for (qsizetype number = first; number <= last; ++number) {
        const qsizetype start = m_text.lineStart(number);
        const CodedLine line(m_text.line(number), m_tables);
        for (const LinkSpan& span : m_ports.find(line.text())) {
            links.append({start + line.columnOf(span.start), start + line.columnOf(span.end),
                          line.text().sliced(span.start, span.end - span.start)});
        }
    }
    return links;
}
