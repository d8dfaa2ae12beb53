#pragma once

#include "common/RunTimeError.h"

#include <array>

// A table with fixed bounds, both included; an index outside raises SubscriptOutOfRange (9).
template<typename T, int Lower, int Upper>
class BoundedArray final
{
public:
    static constexpr int lower = Lower;
    static constexpr int upper = Upper;

    T& operator()(int index) { return m_entries[place(index)]; }
    const T& operator()(int index) const { return m_entries[place(index)]; }

private:
    static std::size_t place(int index)
    {
        if (index < Lower || index > Upper)
            throw RunTimeError(RunTimeError::Number::SubscriptOutOfRange);
        return static_cast<std::size_t>(index - Lower);
    }

    std::array<T, Upper - Lower + 1> m_entries{};
};
