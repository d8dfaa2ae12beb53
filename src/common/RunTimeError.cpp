#include "common/RunTimeError.h"

namespace {

const char* description(RunTimeError::Number number)
{
    switch (number) {
    case RunTimeError::Number::Overflow:
        return "Overflow";
    case RunTimeError::Number::SubscriptOutOfRange:
        return "Subscript out of range";
    case RunTimeError::Number::TypeMismatch:
        return "Type mismatch";
    case RunTimeError::Number::ObjectVariableNotSet:
        return "Object variable or With block variable not set";
    case RunTimeError::Number::InvalidPropertyValue:
        return "Invalid property value";
    case RunTimeError::Number::ObjectRequired:
        return "Object required";
    }
    return "Application-defined or object-defined error";
}

} // namespace

RunTimeError::RunTimeError(Number number)
    : std::runtime_error(description(number))
    , m_number(number)
{
}

QString RunTimeError::message() const
{
    return QStringLiteral("Run-time error '%1':\n\n%2")
        .arg(static_cast<int>(m_number))
        .arg(QLatin1StringView(what()));
}
