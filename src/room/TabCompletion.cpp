#include "room/TabCompletion.h"

#include <QKeyEvent>
#include <QLineEdit>

#include <optional>

namespace {

std::optional<NickCompletion::Direction> directionOf(const QEvent& event)
{
    if (event.type() != QEvent::KeyPress)
        return {};
    const auto& key = static_cast<const QKeyEvent&>(event);
    if (key.modifiers() & (Qt::ControlModifier | Qt::AltModifier))
        return {};
    if (key.key() == Qt::Key_Tab)
        return NickCompletion::Direction::Next;
    if (key.key() == Qt::Key_Backtab)
        return NickCompletion::Direction::Previous;
    return {};
}

} // namespace

TabCompletion::TabCompletion(QLineEdit* field, NickCompletion::Names names)
    : QObject(field)
    , m_field(field)
    , m_completion(std::move(names))
{
    field->installEventFilter(this);
}

bool TabCompletion::eventFilter(QObject*, QEvent* event)
{
    const auto direction = directionOf(*event);
    if (!direction || m_field->hasSelectedText())
        return false;
    const auto line = m_completion.complete(
        {.text = m_field->text(), .caret = m_field->cursorPosition()}, *direction);
    if (!line)
        return false;
    m_field->selectAll();
    m_field->insert(line->text); // can be undone, other than a new text
    m_field->setCursorPosition(static_cast<int>(line->caret));
    return true;
}
