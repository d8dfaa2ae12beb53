#include "room/ChannelModes.h"

void ChannelModes::AddMode(QChar letter)
{
    if (m_letters.contains(letter))
        return;
    m_letters.append(letter);
    Update();
}

void ChannelModes::RemoveMode(QChar letter)
{
    m_letters.removeOne(letter);
    Update();
}

void ChannelModes::ClearModes()
{
    m_letters.clear();
}

QString ChannelModes::ModeString() const
{
    if (m_letters.isEmpty())
        return {};
    return u'+' + QString(m_letters.constData(), m_letters.size());
}

void ChannelModes::Update()
{
    m_modeText = ModeString();
}
