#include "settings/ProfileText.h"

namespace {

constexpr QByteArrayView byteOrderMark("\xef\xbb\xbf");

bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r';
}

bool sameName(QByteArrayView a, QByteArrayView b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

} // namespace

std::optional<QByteArray> ProfileText::value(QByteArrayView section, QByteArrayView key) const
{
    const Search found = search(section, key);
    if (!found.value)
        return std::nullopt;
    return view(*found.value).toByteArray();
}

void ProfileText::setValue(QByteArrayView section, QByteArrayView key, QByteArrayView value)
{
    const Search found = search(section, key);
    if (found.value) {
        m_text.replace(found.value->from, found.value->to - found.value->from, value);
        return;
    }
    const QByteArray end = lineEnd();
    const qsizetype place = found.endOfSection.value_or(m_text.size());
    QByteArray added;
    if (place > 0 && m_text[place - 1] != '\n')
        added.append(end);
    if (!found.endOfSection) {
        if (!m_text.isEmpty())
            added.append(end); // a blank line between sections
        added.append('[').append(section).append(']').append(end);
    }
    added.append(key).append('=').append(value).append(end);
    m_text.insert(place, added);
}

ProfileText::Search ProfileText::search(QByteArrayView section, QByteArrayView key) const
{
    Search result;
    bool isInside = false;
    qsizetype next = m_text.startsWith(byteOrderMark) ? byteOrderMark.size() : 0;
    while (next < m_text.size()) {
        const qsizetype lineFeed = m_text.indexOf('\n', next);
        const qsizetype behind = lineFeed < 0 ? m_text.size() : lineFeed + 1;
        const Span line = trimmed({next, lineFeed < 0 ? behind : lineFeed});
        next = behind;
        if (line.from == line.to)
            continue;
        const char first = m_text[line.from];
        if (first == '[') {
            const qsizetype bracket = view(line).indexOf(']');
            if (bracket < 0)
                continue;
            isInside = sameName(view(trimmed({line.from + 1, line.from + bracket})), section);
            if (isInside && !result.endOfSection)
                result.endOfSection = behind;
            continue;
        }
        if (!isInside)
            continue;
        result.endOfSection = behind;
        const qsizetype equals = view(line).indexOf('=');
        if (first == ';' || first == '#' || equals < 0)
            continue;
        if (sameName(view(trimmed({line.from, line.from + equals})), key)) {
            result.value = trimmed({line.from + equals + 1, line.to});
            return result;
        }
    }
    return result;
}

ProfileText::Span ProfileText::trimmed(Span span) const
{
    while (span.from < span.to && isBlank(m_text[span.from]))
        ++span.from;
    while (span.from < span.to && isBlank(m_text[span.to - 1]))
        --span.to;
    return span;
}

QByteArrayView ProfileText::view(Span span) const
{
    return QByteArrayView(m_text).sliced(span.from, span.to - span.from);
}

QByteArray ProfileText::lineEnd() const
{
    const qsizetype first = m_text.indexOf('\n');
    return first > 0 && m_text[first - 1] == '\r' ? "\r\n" : "\n";
}
