#pragma once

#include <QString>

class ListBox;
struct Room;
struct SessionVariables;

// Who is refused in private talk: one row for each, and what speaks against one more.
class IgnoreRows final
{
public:
    IgnoreRows(ListBox& List1, const SessionVariables& variables, const Room& room)
        : m_list1(List1)
        , m_variables(variables)
        , m_room(room)
    {
    }

    // A text for the user, empty if nothing speaks against the nick.
    QString refusal(const QString& nick) const;
    void add(const QString& nick) const;
    void removeSelected() const;

private:
    ListBox& m_list1;
    const SessionVariables& m_variables;
    const Room& m_room;
};
