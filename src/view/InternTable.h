#pragma once

#include <QHash>

#include <deque>
#include <limits>

// Gives equal values one small number, so that text can refer to them in two bytes. Values are
// never forgotten.
template<typename T>
class InternTable final
{
public:
    quint16 indexOf(const T& value)
    {
        const auto known = m_indices.constFind(value);
        if (known != m_indices.constEnd())
            return *known;
        if (m_values.size() > std::numeric_limits<quint16>::max())
            return 0; // full: shown like the first value
        const auto index = static_cast<quint16>(m_values.size());
        m_values.push_back(value);
        m_indices.insert(value, index);
        return index;
    }

    const T& at(quint16 index) const { return m_values[index]; }

private:
    std::deque<T> m_values; // layouts keep references to values while the table grows
    QHash<T, quint16> m_indices;
};
