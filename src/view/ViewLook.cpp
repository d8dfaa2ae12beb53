#include "view/ViewLook.h"

#include <algorithm>

namespace {

constexpr int step = 10;
constexpr int smallest = 50;
constexpr int largest = 300;

} // namespace

void ViewLook::setShowsTimes(bool on)
{
    if (on == m_showsTimes)
        return;
    m_showsTimes = on;
    Q_EMIT changed();
}

void ViewLook::zoomBy(int steps)
{
    setPercent(m_percent + steps * step);
}

void ViewLook::resetZoom()
{
    setPercent(100);
}

void ViewLook::setPercent(int percent)
{
    percent = std::clamp(percent, smallest, largest);
    if (percent == m_percent)
        return;
    m_percent = percent;
    Q_EMIT changed();
}
