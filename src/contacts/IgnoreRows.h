#pragma once

#include <QString>

class Dialogs;
class LineSink;
class ListBox;
struct Room;
struct SessionVariables;

// Who is refused in private talk: one row for each, and the rules for adding and removing them.
class IgnoreRows final
{
public:
    struct Parts
    {
        ListBox& List1;
        const SessionVariables& variables;
        const Room& room;
        LineSink& server;
        Dialogs& dialogs;
    };

    explicit IgnoreRows(const Parts& parts)
        : m_parts(parts)
    {
    }

    void cmdAdd_Click() const;
    void cmdRemove_Click() const;

private:
    // The text of the box that refuses a nick, empty if nothing speaks against it.
    QString refusal(const QString& nick) const;

    Parts m_parts;
};
