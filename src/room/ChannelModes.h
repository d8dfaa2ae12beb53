#pragma once

#include "common/Int16.h"

#include <QList>
#include <QString>

// The mode letters that are set, the own user's among them, and the parameters of +k and +l.
class ChannelModes final
{
public:
    void AddMode(QChar letter);
    void RemoveMode(QChar letter);
    // ModeText keeps its value until the next Update; the parameters stay.
    void ClearModes();
    // "+" and the letters, the oldest first, no parameters. Without a mode it is empty.
    QString ModeString() const;
    void Update();

    const QString& ModeText() const { return m_modeText; }

    QString ChanKey;
    Int16 ChanLimit;

private:
    QList<QChar> m_letters;
    QString m_modeText;
};
