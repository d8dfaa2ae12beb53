#pragma once

#include "desktop/WavePlayer.h"

#include <QHash>
#include <QObject>
#include <QPointer>

class QSoundEffect;

// The wave player on the toolkit's sound effects. Without an audio device an effect says that it
// plays for ever, so nothing here asks.
class SoundEffectPlayer final : public QObject, public WavePlayer
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QH_WavePlayer_iid)
    Q_INTERFACES(WavePlayer)

public:
    bool play(const QString& file) override;

private:
    QHash<QString, QPointer<QSoundEffect>> m_effects;
};
