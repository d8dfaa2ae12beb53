#pragma once

#include "view/ChatText.h"
#include "view/SpokenText.h"

#include <QAccessible>

#include <functional>

class ReaderSelection;

// Tells screen readers what has changed in a chat view. Text behind what they know is told when it
// is shown, in one piece; a change of what they know at once, because its text is about to go.
class AccessibleChanges final
{
public:
    using Sink = std::function<void(QAccessibleEvent& event)>;

    AccessibleChanges(QObject* view, const ChatText& text, const SpokenText& spoken, Sink sink);

    void aboutToReplace(qsizetype start, qsizetype length, QStringView text);
    // Returns it.
    QString textShown();
    // While nobody listens, new text needs no copying. It will not be told later.
    void skipNewText() { m_known = m_text.length(); }
    void readerMoved(const ReaderSelection& reader);

private:
    int offsetOf(qsizetype position) const;
    QString spoken(qsizetype start, qsizetype end) const;
    void tellInserted(qsizetype start, const QString& text);

    QObject* m_view;
    const ChatText& m_text;
    const SpokenText& m_spoken;
    Sink m_sink;
    qsizetype m_known = 0; // how much of the text has been told
};
