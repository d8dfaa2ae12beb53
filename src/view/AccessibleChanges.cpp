#include "view/AccessibleChanges.h"

#include "view/ReaderSelection.h"

AccessibleChanges::AccessibleChanges(QObject* view, const ChatText& text, const SpokenText& spoken,
                                     Sink sink)
    : m_view(view)
    , m_text(text)
    , m_spoken(spoken)
    , m_sink(std::move(sink))
{
}

void AccessibleChanges::aboutToReplace(qsizetype start, qsizetype length, QStringView text)
{
    if (start >= m_known)
        return;
    const qsizetype removed = std::min(length, m_known - start);
    const bool isInside = start + removed < m_known;
    m_known -= removed;
    if (removed > 0) {
        QAccessibleTextRemoveEvent event(m_view, offsetOf(start), spoken(start, start + removed));
        m_sink(event);
    }
    if (!isInside || text.isEmpty())
        return;
    m_known += text.size();
    tellInserted(start, text.toString());
}

QString AccessibleChanges::textShown()
{
    if (m_known == m_text.length())
        return {};
    const QString text = spoken(m_known, m_text.length());
    tellInserted(m_known, text);
    skipNewText();
    return text;
}

void AccessibleChanges::readerMoved(const ReaderSelection& reader)
{
    QAccessibleTextSelectionEvent selection(m_view, offsetOf(reader.start()),
                                            offsetOf(reader.end()));
    selection.setCursorPosition(offsetOf(reader.caret()));
    m_sink(selection);
    QAccessibleTextCursorEvent caret(m_view, offsetOf(reader.caret()));
    m_sink(caret);
}

int AccessibleChanges::offsetOf(qsizetype position) const
{
    return static_cast<int>(m_spoken.offsetOf(position));
}

QString AccessibleChanges::spoken(qsizetype start, qsizetype end) const
{
    return m_spoken.text(m_spoken.offsetOf(start), m_spoken.offsetOf(end));
}

void AccessibleChanges::tellInserted(qsizetype start, const QString& text)
{
    QAccessibleTextInsertEvent event(m_view, offsetOf(start), text);
    m_sink(event);
}
