#pragma once

#include <QString>
#include <QStringList>

class Settings;
class UserStore;

// Where to chat: what the settings hold of it, and the addresses that were chosen before.
struct NetworkChoice
{
    QString server;  // as ServerAddress takes it
    QString room;    // empty: none is entered
    QString charset; // a word of the setting

    bool operator==(const NetworkChoice&) const = default;

    // What the file says, whatever the command line says for this run.
    static NetworkChoice fromSettings(const Settings& settings);
    void save(const Settings& settings, const UserStore& store) const;

    // Newest first.
    static QStringList usedBefore(const UserStore& store);
};
