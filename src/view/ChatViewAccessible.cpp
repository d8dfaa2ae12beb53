#include "view/ChatViewAccessible.h"

#include "view/ChatView.h"

#include <QColor>

#include <algorithm>

using namespace Qt::StringLiterals;

ChatViewAccessible::ChatViewAccessible(ChatView* view)
    : QAccessibleWidget(view, QAccessible::EditableText)
{
}

QAccessibleInterface* ChatViewAccessible::create(const QString&, QObject* object)
{
    auto* view = qobject_cast<ChatView*>(object);
    return view ? new ChatViewAccessible(view) : nullptr;
}

QAccessible::State ChatViewAccessible::state() const
{
    QAccessible::State state = QAccessibleWidget::state();
    state.readOnly = true;
    state.multiLine = true;
    state.selectableText = true;
    return state;
}

void* ChatViewAccessible::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::TextInterface)
        return static_cast<QAccessibleTextInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
}

void ChatViewAccessible::selection(int index, int* start, int* end) const
{
    const ReaderSelection& selection = view()->readerSelection();
    const bool exists = index == 0 && !selection.isEmpty();
    *start = exists ? offset(selection.start()) : 0;
    *end = exists ? offset(selection.end()) : 0;
}

int ChatViewAccessible::selectionCount() const
{
    return view()->readerSelection().isEmpty() ? 0 : 1;
}

void ChatViewAccessible::addSelection(int start, int end)
{
    setSelection(0, start, end);
}

void ChatViewAccessible::removeSelection(int index)
{
    if (index == 0)
        setCursorPosition(cursorPosition());
}

void ChatViewAccessible::setSelection(int index, int start, int end)
{
    if (index == 0)
        view()->selectForReader(position(start), position(end));
}

int ChatViewAccessible::cursorPosition() const
{
    return offset(view()->readerSelection().caret());
}

void ChatViewAccessible::setCursorPosition(int offset)
{
    view()->selectForReader(position(offset), position(offset));
    view()->scrollToPosition(position(offset));
}

QString ChatViewAccessible::text(int start, int end) const
{
    const SpokenText& spoken = view()->spokenText();
    const qsizetype length = spoken.length();
    const qsizetype last = end < 0 ? length : std::min<qsizetype>(end, length);
    return spoken.text(std::clamp<qsizetype>(start, 0, last), last);
}

QString ChatViewAccessible::textBeforeOffset(int offset, QAccessible::TextBoundaryType type,
                                             int* start, int* end) const
{
    const Range here = unitAt(position(offset), type);
    if (here.start == 0)
        return part({}, start, end);
    return part({unitAt(here.start - 1, type).start, here.start}, start, end);
}

QString ChatViewAccessible::textAfterOffset(int offset, QAccessible::TextBoundaryType type,
                                            int* start, int* end) const
{
    const Range here = unitAt(position(offset), type);
    if (here.end >= view()->chatText().length())
        return part({here.end, here.end}, start, end);
    return part({here.end, unitAt(here.end, type).end}, start, end);
}

QString ChatViewAccessible::textAtOffset(int offset, QAccessible::TextBoundaryType type, int* start,
                                         int* end) const
{
    return part(unitAt(position(offset), type), start, end);
}

int ChatViewAccessible::characterCount() const
{
    return static_cast<int>(view()->spokenText().length());
}

QRect ChatViewAccessible::characterRect(int offset) const
{
    const QRect place = view()->characterRect(position(offset));
    return {view()->viewport()->mapToGlobal(place.topLeft()), place.size()};
}

int ChatViewAccessible::offsetAtPoint(const QPoint& point) const
{
    const qsizetype found = view()->offsetAt(view()->mapFromGlobal(point));
    return found < 0 ? -1 : offset(view()->chatText().positionOf(found));
}

void ChatViewAccessible::scrollToSubstring(int start, int end)
{
    view()->scrollToPosition(position(end));
    view()->scrollToPosition(position(start));
}

QString ChatViewAccessible::attributes(int offset, int* start, int* end) const
{
    const ChatText& text = view()->chatText();
    const qsizetype at = position(offset);
    const qsizetype lineStart = text.lineStart(text.lineAt(at));
    const ChatText::Line line = text.line(text.lineAt(at));
    size_t run = 0;
    while (run + 1 < line.runs.size() && line.runs[run + 1].start <= at - lineStart)
        ++run;
    *start = this->offset(lineStart + line.runs[run].start);
    *end = this->offset(lineStart + line.runEnd(run));
    const TextStyle& style = view()->styleAt(at);
    const QColor color = QColor::fromRgb(style.color);
    QString result =
        u"color:rgb(%1,%2,%3);"_s.arg(color.red()).arg(color.green()).arg(color.blue());
    if (style.bold)
        result += "font-weight:bold;"_L1;
    if (style.underline)
        result += "text-underline-style:solid;"_L1;
    if (style.strikeThru)
        result += "text-line-through-type:single;"_L1;
    return result;
}

ChatView* ChatViewAccessible::view() const
{
    return static_cast<ChatView*>(object());
}

qsizetype ChatViewAccessible::position(int offset) const
{
    const SpokenText& spoken = view()->spokenText();
    return spoken.positionOf(std::clamp<qsizetype>(offset, 0, spoken.length()));
}

int ChatViewAccessible::offset(qsizetype position) const
{
    return static_cast<int>(view()->spokenText().offsetOf(position));
}

// Within one line: the whole text is too much to look for the ends of a word in.
ChatViewAccessible::Range ChatViewAccessible::unitAt(qsizetype position,
                                                     QAccessible::TextBoundaryType type) const
{
    const ChatText& text = view()->chatText();
    switch (type) {
    case QAccessible::CharBoundary:
        return {position, nextCharacter(text, position)};
    case QAccessible::WordBoundary:
        // The line end is a word of its own.
        if (position == text.lineEnd(text.lineAt(position)))
            return {position, std::min(position + 1, text.length())};
        return {wordStart(text, position), wordEnd(text, position)};
    case QAccessible::SentenceBoundary:
    case QAccessible::ParagraphBoundary:
    case QAccessible::LineBoundary: {
        const qsizetype line = text.lineAt(position);
        return {text.lineStart(line), std::min(text.lineEnd(line) + 1, text.length())};
    }
    case QAccessible::NoBoundary:
        break;
    }
    return {0, text.length()};
}

QString ChatViewAccessible::part(const Range& range, int* start, int* end) const
{
    *start = offset(range.start);
    *end = offset(range.end);
    return view()->spokenText().text(*start, *end);
}
