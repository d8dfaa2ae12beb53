#include "sound/SoundEffectPlayer.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QSoundEffect>
#include <QUrl>

bool SoundEffectPlayer::play(const QString& file)
{
    if (!QFileInfo(file).isFile())
        return false;
    QPointer<QSoundEffect>& effect = m_effects[file];
    if (!effect) {
        // The application's, because a module's root object outlives it.
        effect = new QSoundEffect(QCoreApplication::instance());
        effect->setSource(QUrl::fromLocalFile(file));
    }
    effect->play();
    return true;
}
