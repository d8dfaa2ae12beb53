#pragma once

// The way of the popup over the screen, in twips: it rises from the lower edge, rests, and sinks
// until its height runs out. Kept apart from the window, which only follows.
class PopupSlide final
{
public:
    enum class Outcome { GoesOn, Unload, Broken };

    static constexpr int designInterval = 1; // milliseconds, until the first tick

    PopupSlide(int screenWidth, int screenHeight, int width);

    // One tick of the timer. Broken: a height below zero has been refused (380), which is how the
    // popup ends in practice; the window yields before it goes.
    Outcome Timer1_Timer();

    int Left() const { return m_left; }
    int Top() const { return m_top; }
    int Height() const { return m_height; }
    int Interval() const { return m_interval; } // milliseconds to the next tick
    bool isResting() const;                     // until the next tick it stays where it is
    bool SlidingIn() const { return m_slidingIn; }

private:
    void setHeight(int height);

    int m_screenHeight;
    int m_left;
    int m_top;
    int m_height = 0;
    int m_interval = designInterval;
    bool m_slidingIn = true;
};
