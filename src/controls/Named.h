#pragma once

#include <QString>

// Gives a control its name, and screen readers one of theirs where its text does not say it.
template<typename Control>
Control* named(Control* control, const QString& name, const QString& accessibleName = {})
{
    control->setObjectName(name);
    if constexpr (requires { control->setAccessibleName(accessibleName); }) {
        if (!accessibleName.isEmpty())
            control->setAccessibleName(accessibleName);
    }
    return control;
}
