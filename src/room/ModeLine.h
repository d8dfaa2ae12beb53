#pragma once

#include <QString>

class ChannelTable;
struct SessionVariables;

// Applies mode changes (RFC 1459, section 4.2.3) to the rooms.
class ModeLine final
{
public:
    ModeLine(const SessionVariables& variables, const ChannelTable& channels)
        : m_variables(variables)
        , m_channels(channels)
    {
    }

    // The text is the letters with all that is behind them. A letter whose parameter is missing
    // raises SubscriptOutOfRange (9), a limit that is no number TypeMismatch (13).
    void ApplyModeLine(const QString& target, const QString& text) const;

private:
    void ApplyOneMode(const QString& target, bool on, QChar letter, const QString& parameter) const;

    const SessionVariables& m_variables;
    const ChannelTable& m_channels;
};
