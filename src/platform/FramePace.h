#pragma once

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QObject>

class QWidget;

// Keeps a window from being painted after each of many small changes, when whoever makes them lets
// events run in between. A window that has rested is painted at once; after that it rests for
// 8 milliseconds, or for four times as long as its painting took.
class FramePace final : public QObject
{
public:
    explicit FramePace(QWidget& window);

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    qint64 rest() const; // milliseconds that are left of it

    QWidget& m_window;
    QBasicTimer m_due;
    QElapsedTimer m_sincePainting;
    qint64 m_restTime = 0; // milliseconds
};
