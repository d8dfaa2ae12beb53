#include "desktop/PrivatePlace.h"

#include "platform/ScreenFit.h"

#include <algorithm>

namespace {

constexpr int gap = 8;
constexpr int step = 28;
constexpr int stepsWanted = 3; // room for so many windows before the corners come again
constexpr int sameCorner = step / 2;

} // namespace

// The part of the screen in which the window may stand anywhere.
QRect PrivatePlace::field() const
{
    if (room.isEmpty())
        return screen;
    const QRect right(QPoint(room.right() + 1 + gap, screen.top()), screen.bottomRight());
    const QRect left(screen.topLeft(), QPoint(room.left() - 1 - gap, screen.bottom()));
    const QRect above(screen.topLeft(), QPoint(screen.right(), inputTop - 1 - gap));
    const auto takes = [this](const QRect& part) {
        return part.width() >= smallest.width() && part.height() >= smallest.height();
    };
    for (const QRect& part : {right, left, above}) {
        if (takes(part))
            return part;
    }
    return screen;
}

QRect PrivatePlace::find() const
{
    const QRect part = field();
    const QSize steps(step * stepsWanted, step * stepsWanted);
    const QSize size = wanted.boundedTo((part.size() - steps).expandedTo(smallest));
    const bool onTheLeft = !room.isEmpty() && part.right() < room.left();
    // Close to the room at its height, or over it at the right.
    QRect first(QPoint(), size);
    first.moveTop(room.isEmpty() ? part.center().y() - size.height() / 2 : room.top());
    if (room.isEmpty())
        first.moveLeft(part.center().x() - size.width() / 2);
    else if (onTheLeft || part.left() <= room.left())
        first.moveRight(part.right() - steps.width());
    else
        first.moveLeft(part.left());
    first = fitted(first, part.marginsRemoved(
                              {0, 0, 0, std::min(steps.height(), part.height() - size.height())}));

    QRect place = first;
    for (qsizetype i = 0; i < taken.size() + 1; ++i) {
        place =
            fitted(first.translated(static_cast<int>(i) * step, static_cast<int>(i) * step), part);
        const bool free = std::none_of(taken.begin(), taken.end(), [&](const QPoint& corner) {
            return (corner - place.topLeft()).manhattanLength() < sameCorner;
        });
        if (free)
            return place;
    }
    return place;
}
