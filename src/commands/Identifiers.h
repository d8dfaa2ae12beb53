#pragma once

#include "platform/Clock.h"

#include <QString>

#include <functional>

class ChannelTable;
class ServerLink;
struct SessionVariables;

// The words with a "$" in front that stand for a value in a command text.
class Identifiers final
{
public:
    struct Parts
    {
        const SessionVariables& variables;
        const ChannelTable& channels;
        const ServerLink& server;
        const Clock& clock;
        std::function<double()> random; // 0 up to, but not including, 1
    };

    explicit Identifiers(const Parts& parts)
        : m_parts(parts)
    {
    }

    // The name comes without its "$", in any case. Unknown names and failures give the empty text.
    QString Identifier(const QString& target, const QString& name) const;

private:
    QString randomNick(const QString& target) const;

    Parts m_parts;
};
