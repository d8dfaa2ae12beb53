#include "view/AccessibleChanges.h"

#include "view/ReaderSelection.h"

AccessibleChanges::AccessibleChanges(QObject* view, const ChatText& text, Sink sink)
    : m_view(view)
    , m_text(text)
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
        QAccessibleTextRemoveEvent event(m_view, static_cast<int>(start),
                                         m_text.text(start, start + removed));
        m_sink(event);
    }
    if (!isInside || text.isEmpty())
        return;
    m_known += text.size();
    tellInserted(start, text.toString());
}

void AccessibleChanges::textShown()
{
    if (m_known < m_text.length())
        tellInserted(m_known, m_text.text(m_known, m_text.length()));
    skipNewText();
}

void AccessibleChanges::readerMoved(const ReaderSelection& reader)
{
    QAccessibleTextSelectionEvent selection(m_view, static_cast<int>(reader.start()),
                                            static_cast<int>(reader.end()));
    selection.setCursorPosition(static_cast<int>(reader.caret()));
    m_sink(selection);
    QAccessibleTextCursorEvent caret(m_view, static_cast<int>(reader.caret()));
    m_sink(caret);
}

void AccessibleChanges::tellInserted(qsizetype start, const QString& text)
{
    QAccessibleTextInsertEvent event(m_view, static_cast<int>(start), text);
    m_sink(event);
}
