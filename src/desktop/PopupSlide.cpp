#include "desktop/PopupSlide.h"

#include "common/RunTimeError.h"

#include <optional>

namespace {

constexpr int stepTwips = 55;
constexpr int stepMilliseconds = 11;
constexpr int restMilliseconds = 4000;
constexpr int restHeight = 1740;
constexpr int marginBelow = 450;
constexpr int marginRight = 200;
constexpr int restAbove = marginBelow + restHeight; // from the lower edge of the screen
constexpr int goneBelow = 50;

} // namespace

PopupSlide::PopupSlide(int screenWidth, int screenHeight, int width)
    : m_screenHeight(screenHeight)
    , m_left(screenWidth - (width + marginRight))
    , m_top(screenHeight - marginBelow)
{
}

void PopupSlide::setHeight(int height)
{
    if (height < 0)
        throw RunTimeError(RunTimeError::Number::InvalidPropertyValue);
    m_height = height;
}

bool PopupSlide::isResting() const
{
    return m_interval == restMilliseconds;
}

PopupSlide::Outcome PopupSlide::Timer1_Timer()
{
    Outcome outcome = Outcome::GoesOn;
    std::optional<RunTimeError::Number> failure; // of the latest statement that failed
    const auto setHeightOrGoOn = [&](int height) {
        try {
            setHeight(height);
        } catch (const RunTimeError& error) {
            failure = error.number();
        }
    };

    m_interval = stepMilliseconds;
    if (m_slidingIn) {
        m_top -= stepTwips;
        if (m_screenHeight - marginBelow >= m_top)
            setHeightOrGoOn(m_height + stepTwips);
        if (m_screenHeight - restAbove >= m_top) {
            m_top = m_screenHeight - restAbove;
            setHeightOrGoOn(restHeight);
            m_interval = restMilliseconds;
            m_slidingIn = false;
        }
    } else {
        setHeightOrGoOn(m_height - stepTwips);
        m_top += stepTwips;
        if (m_screenHeight + goneBelow <= m_top)
            outcome = Outcome::Unload;
    }
    if (failure == RunTimeError::Number::InvalidPropertyValue)
        outcome = Outcome::Broken;
    return outcome;
}
