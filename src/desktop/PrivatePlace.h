#pragma once

#include <QList>
#include <QRect>

// Where a private window goes: beside the room if the screen has room there, else over it, and in
// both cases clear of the line that the user may be typing in. Further ones stand in a cascade.
struct PrivatePlace
{
    QSize wanted; // frames, as everything here
    QSize smallest;
    QRect room;       // the main window; empty if it is not to be seen
    int inputTop = 0; // from here down to its lower edge the room is kept clear
    QRect screen;
    QList<QPoint> taken; // the corners of other private windows

    QRect find() const;

private:
    QRect field() const;
};
