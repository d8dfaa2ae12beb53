#pragma once

#include <QString>
#include <QtPlugin>

// Starts a wave file and returns at once.
class WavePlayer
{
public:
    virtual ~WavePlayer() = default;

    // Whether the file was there to be started; what becomes of it nobody learns.
    virtual bool play(const QString& file) = 0;
};

#define QH_WavePlayer_iid "quillharbor.WavePlayer/1"
Q_DECLARE_INTERFACE(WavePlayer, QH_WavePlayer_iid)
