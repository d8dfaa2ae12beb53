#pragma once

#include <QString>

class Dialogs;
class ListBox;
class UserStore;

// The names that are looked for: rows of a list, which the store keeps from one session to the
// next.
class WatchedNames final
{
public:
    struct Parts
    {
        ListBox& lstSetup;
        Dialogs& dialogs;
        const UserStore& store;
    };

    explicit WatchedNames(const Parts& parts)
        : m_parts(parts)
    {
    }

    void load() const;
    void save() const;

    // Asks for one; false when none is new.
    bool add() const;
    void removeSelected() const;

    // Each with a blank behind it.
    QString all() const;

private:
    bool isWatched(const QString& nick) const;

    Parts m_parts;
};
