#pragma once

#include "desktop/WavePlayer.h"

#include <QStringList>

#include <optional>

class MenuEntry;
class Modules;

// The sound option and the one thing it decides. The names of its two menu entries cross over their
// captions: mnu_sound_no is "Yes".
class Sounds final
{
public:
    Sounds(const MenuEntry& mnu_sound_no, const MenuEntry& mnu_sound_yes, WavePlayer& player,
           QStringList folders);

    // Beside the program, then where an installed program keeps its data.
    static QStringList programFolders();

    // Plays a file of the program and does not wait for it. Nothing when sound is off.
    std::optional<bool> PlayWave(const QString& name);

private:
    const MenuEntry& m_mnuSoundNo;
    const MenuEntry& m_mnuSoundYes;
    WavePlayer& m_player;
    QStringList m_folders;
};

// Loads the player with the first sound. Without it there is silence.
class WavePlayerOnDemand final : public WavePlayer
{
public:
    explicit WavePlayerOnDemand(const Modules& modules)
        : m_modules(modules)
    {
    }

    bool play(const QString& file) override;

private:
    const Modules& m_modules;
    bool m_asked = false;
    WavePlayer* m_player = nullptr;
};
