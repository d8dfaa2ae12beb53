#include "view/InputKeys.h"

#include "view/ChatView.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>

#include <algorithm>
#include <array>

namespace {

struct ViewKey
{
    QKeySequence::StandardKey key;
    void (*act)(ChatView& view);
};

constexpr std::array viewKeys{
    ViewKey{QKeySequence::Find, [](ChatView& view) { view.find(); }},
    ViewKey{QKeySequence::MoveToPreviousPage, [](ChatView& view) { view.scrollByPages(-1); }},
    ViewKey{QKeySequence::MoveToNextPage, [](ChatView& view) { view.scrollByPages(1); }},
    ViewKey{QKeySequence::MoveToStartOfDocument, [](ChatView& view) { view.scrollToStart(); }},
    ViewKey{QKeySequence::MoveToEndOfDocument, [](ChatView& view) { view.scrollToEnd(); }},
};

bool isTyping(const QKeyEvent& event)
{
    if (event.matches(QKeySequence::Paste))
        return true;
    const auto commands = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    return !(event.modifiers() & commands) && !event.text().isEmpty() &&
           event.text().front().isPrint();
}

} // namespace

InputKeys::InputKeys(ChatView& view, QLineEdit& input)
    : m_view(view)
    , m_input(input)
{
    connect(&view, &ChatView::KeyLeft, this, [this](QKeyEvent* event) { typed(*event); });
}

bool InputKeys::take(const QKeyEvent& event)
{
    if (event.matches(QKeySequence::Copy)) {
        if (m_input.hasSelectedText() || m_view.readerSelection().isEmpty())
            return false;
        m_view.copy();
        return true;
    }
    const auto key = std::find_if(viewKeys.begin(), viewKeys.end(),
                                  [&](const ViewKey& entry) { return event.matches(entry.key); });
    if (key == viewKeys.end())
        return m_view.zoomByKey(event);
    key->act(m_view);
    return true;
}

void InputKeys::typed(QKeyEvent& event)
{
    if (!isTyping(event))
        return;
    m_input.setFocus();
    QCoreApplication::sendEvent(&m_input, &event);
    event.accept();
}
