#pragma once

#include "common/RunTimeError.h"

#include <cstdint>
#include <limits>

// A signed 16-bit counter: every result outside its range raises Overflow (6) and leaves the
// old value in place.
class Int16 final
{
public:
    constexpr Int16() = default;
    constexpr Int16(qint64 value)
        : m_value(checked(value))
    {
    }

    constexpr operator int() const { return m_value; }

    constexpr Int16& operator+=(qint64 by) { return *this = Int16(m_value + by); }
    constexpr Int16& operator-=(qint64 by) { return *this = Int16(m_value - by); }
    constexpr Int16& operator++() { return *this += 1; }
    constexpr Int16& operator--() { return *this -= 1; }

private:
    static constexpr std::int16_t checked(qint64 value)
    {
        using Limits = std::numeric_limits<std::int16_t>;
        if (value < Limits::min() || value > Limits::max())
            throw RunTimeError(RunTimeError::Number::Overflow);
        return static_cast<std::int16_t>(value);
    }

    std::int16_t m_value = 0;
};
