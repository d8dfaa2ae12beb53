#pragma once

#include <QString>

// The form with a room's ban, exception and invitation lists.
class ListsForm
{
public:
    virtual ~ListsForm() = default;

    virtual void AddBEI(const QString& mask, const QString& setter, const QString& time) = 0;
    virtual bool Visible() const = 0;
    virtual void Show() = 0;
};
