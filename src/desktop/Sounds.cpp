#include "desktop/Sounds.h"

#include "controls/MenuEntry.h"
#include "desktop/Modules.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

Sounds::Sounds(const MenuEntry& mnu_sound_no, const MenuEntry& mnu_sound_yes, WavePlayer& player,
               QStringList folders)
    : m_mnuSoundNo(mnu_sound_no)
    , m_mnuSoundYes(mnu_sound_yes)
    , m_player(player)
    , m_folders(std::move(folders))
{
}

QStringList Sounds::programFolders()
{
    const QDir program(QCoreApplication::applicationDirPath());
    return {program.path(),
            QDir::cleanPath(program.filePath(QStringLiteral(QH_DATA_FROM_PROGRAM)))};
}

std::optional<bool> Sounds::PlayWave(const QString& name)
{
    if (m_mnuSoundYes.Checked() || !m_mnuSoundNo.Checked())
        return {};
    for (const QString& folder : m_folders) {
        const QString file = QDir(folder).filePath(name);
        if (QFile::exists(file))
            return m_player.play(file);
    }
    return false;
}

bool WavePlayerOnDemand::play(const QString& file)
{
    if (!m_asked) {
        m_asked = true;
        m_player = m_modules.load<WavePlayer>(u"qhsound"_s);
    }
    return m_player && m_player->play(file);
}
