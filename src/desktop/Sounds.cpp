#include "desktop/Sounds.h"

#include "desktop/Modules.h"
#include "platform/MenuEntry.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

Sounds::Sounds(MenuEntry& mnu_sound_no, MenuEntry& mnu_sound_yes, WavePlayer& player,
               QStringList folders)
    : m_mnuSoundNo(mnu_sound_no)
    , m_mnuSoundYes(mnu_sound_yes)
    , m_player(player)
    , m_folders(std::move(folders))
{
    m_mnuSoundNo.setChecked(true);
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

void Sounds::mnu_sound_no_Click()
{
    m_mnuSoundYes.setChecked(!m_mnuSoundNo.Checked());
}

void Sounds::mnu_sound_yes_Click()
{
    m_mnuSoundNo.setChecked(!m_mnuSoundYes.Checked());
}

bool WavePlayerOnDemand::play(const QString& file)
{
    if (!m_asked) {
        m_asked = true;
        m_player = m_modules.load<WavePlayer>(u"qhsound"_s);
    }
    return m_player && m_player->play(file);
}
