#pragma once

#include <QObject>

// How all chat views of one program are shown, whatever their text says of itself: with the time
// of each line or without, and larger or smaller on the screen.
class ViewLook final : public QObject
{
    Q_OBJECT
public:
    bool showsTimes() const { return m_showsTimes; }
    void setShowsTimes(bool on);

    double zoom() const { return m_percent / 100.0; }
    // By one step, larger or smaller, within what can be read and what has room.
    void zoomBy(int steps);
    void resetZoom();

Q_SIGNALS:
    void changed();

private:
    void setPercent(int percent);

    bool m_showsTimes = false;
    int m_percent = 100;
};
