#include "view/MarkedScrollBar.h"

#include "view/LineDecor.h"

#include <QPainter>

namespace {

constexpr int markHeight = 3;
constexpr int sideGap = 3;

} // namespace

MarkedScrollBar::MarkedScrollBar(Marks marks, QWidget* parent)
    : QScrollBar(Qt::Vertical, parent)
    , m_marks(std::move(marks))
{
}

void MarkedScrollBar::paintEvent(QPaintEvent* event)
{
    QScrollBar::paintEvent(event);
    QPainter painter(this);
    int last = -markHeight;
    for (const double place : m_marks()) {
        const auto y = static_cast<int>(place * (height() - markHeight));
        if (y < last + markHeight) // marks that touch are one
            continue;
        painter.fillRect(QRect(sideGap, y, width() - 2 * sideGap, markHeight),
                         LineDecor::markColor());
        last = y;
    }
}
