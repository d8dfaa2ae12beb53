#include "desktop/WavePlayer.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QHash>
#include <QPointer>
#include <QSoundEffect>
#include <QUrl>

// The wave player on the toolkit's sound effects. Without an audio device an effect says that it
// plays for ever, so nothing here asks.
class SoundEffectPlayer final : public QObject, public WavePlayer
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QH_WavePlayer_iid)
    Q_INTERFACES(WavePlayer)

public:
    bool play(const QString& file) override
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

private:
    QHash<QString, QPointer<QSoundEffect>> m_effects;
};

#include "SoundEffectPlayer.moc"
