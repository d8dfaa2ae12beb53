#pragma once

#include <QString>

#include <stdexcept>

// A failure that the behaviour relies on, with its classic number. Thrown by checked counters,
// bounded tables and text conversions; caught at the edge of an event handler.
class RunTimeError final : public std::runtime_error
{
public:
    enum class Number {
        Overflow = 6,
        SubscriptOutOfRange = 9,
        TypeMismatch = 13,
        ObjectVariableNotSet = 91,
        InvalidPropertyValue = 380,
        ObjectRequired = 424,
    };

    explicit RunTimeError(Number number);

    Number number() const { return m_number; }
    // The text of the error box: number, a blank line, what went wrong.
    QString message() const;

private:
    Number m_number;
};
