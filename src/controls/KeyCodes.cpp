#include "controls/KeyCodes.h"

#include <QKeyEvent>

int key_codes::keyCodeOf(const QKeyEvent& event)
{
    switch (event.key()) {
    case Qt::Key_Backspace:
        return Backspace;
    case Qt::Key_Delete:
        return Delete;
    case Qt::Key_Up:
        return Up;
    case Qt::Key_Down:
        return Down;
    default:
        return 0;
    }
}

int key_codes::characterOf(const QKeyEvent& event)
{
    if (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter)
        return Enter;
    return event.text().isEmpty() ? 0 : event.text().front().unicode();
}
