#pragma once

#include <QString>
#include <QStringList>

class CommandProcessor;
class Dialogs;
class MenuEntry;
class ServerLink;
struct Room;

// The menu that tells the room and the server that the user is away, and back. Which of the two
// holds stands in a caption, that of mnu_status_away, and a disconnect leaves it as it is. It
// begins with a text that a click knows nothing of: until a preset has been chosen, the entry
// does nothing.
class Presence final
{
public:
    struct Parts
    {
        const Room& room;
        ServerLink& server;
        CommandProcessor& commands;
        Dialogs& dialogs;
        MenuEntry& mnu_status_away;
    };

    explicit Presence(const Parts& parts)
        : m_parts(parts)
    {
    }

    // The names of the entries that do something.
    static QStringList entries();
    // Other names do nothing, and nothing does anything without a connection.
    void click(const QString& entry);

private:
    void mnu_status_away_Click();
    void announce(const QString& text);

    Parts m_parts;
};
