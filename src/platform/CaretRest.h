#pragma once

#include <QObject>
#include <QTimer>

// Lets the caret of input lines rest, visible, when nothing has been typed or clicked for a
// while: blinking is most of what an idle program does.
class CaretRest final : public QObject
{
    Q_OBJECT
public:
    explicit CaretRest(QObject* application);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    int m_flashTime; // milliseconds, as the desktop wants it
    QTimer m_quiet{this};
};
