#pragma once

#include <QString>

// The buddy list.
class ContactList
{
public:
    virtual ~ContactList() = default;

    virtual void AddUsers(const QString& names) = 0;
    virtual void clearOnline() = 0;
    virtual bool Visible() const = 0;
    virtual void Load() = 0;
    virtual void Unload() = 0;
};
