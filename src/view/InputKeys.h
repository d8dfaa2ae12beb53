#pragma once

#include <QObject>

class ChatView;
class QKeyEvent;
class QLineEdit;

// The keyboard between a chat view and the input line below it: keys that a line of text has no
// use for work on the view, and what is typed in the view goes to the line.
class InputKeys final : public QObject
{
    Q_OBJECT
public:
    InputKeys(ChatView& view, QLineEdit& input);

    // A key pressed in the line. True: it was for the view.
    bool take(const QKeyEvent& event);

private:
    void typed(QKeyEvent& event);

    ChatView& m_view;
    QLineEdit& m_input;
};
