#include "view/TextSearch.h"

#include <QStringMatcher>

namespace {

std::optional<qsizetype> findForward(const ChatText& text, const QString& wanted, qsizetype from)
{
    const QStringMatcher matcher(wanted, Qt::CaseInsensitive);
    const qsizetype firstLine = text.lineAt(from);
    qsizetype column = from - text.lineStart(firstLine);
    // The first line is looked at once more at the end, for what stands before the start.
    for (qsizetype i = 0; i <= text.lineCount(); ++i) {
        const qsizetype line = (firstLine + i) % text.lineCount();
        const qsizetype found = matcher.indexIn(text.lineText(line), column);
        if (found >= 0)
            return text.lineStart(line) + found;
        column = 0;
    }
    return std::nullopt;
}

std::optional<qsizetype> findBackward(const ChatText& text, const QString& wanted, qsizetype from)
{
    const qsizetype firstLine = text.lineAt(from);
    qsizetype column = from - text.lineStart(firstLine) - 1;
    for (qsizetype i = 0; i <= text.lineCount(); ++i) {
        const qsizetype line = (firstLine - i + text.lineCount()) % text.lineCount();
        const QString candidate = text.lineText(line);
        if (i > 0)
            column = candidate.size();
        const qsizetype found =
            column < 0 ? -1 : candidate.lastIndexOf(wanted, column, Qt::CaseInsensitive);
        if (found >= 0)
            return text.lineStart(line) + found;
    }
    return std::nullopt;
}

} // namespace

std::optional<qsizetype> findText(const ChatText& text, const QString& wanted, qsizetype from,
                                  SearchDirection direction)
{
    if (wanted.isEmpty())
        return std::nullopt;
    return direction == SearchDirection::Forward ? findForward(text, wanted, from)
                                                 : findBackward(text, wanted, from);
}
