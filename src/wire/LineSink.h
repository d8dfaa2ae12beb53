#pragma once

#include <QString>

// The only way to the server. The line comes without its end; it is dropped in silence while
// there is no connection.
class LineSink
{
public:
    virtual ~LineSink() = default;
    virtual void SendData(const QString& line) = 0;
};

// The same with what can be asked of the connection.
class ServerLink : public LineSink
{
public:
    virtual int sockState() const = 0; // Winsock::State
    virtual QString remoteHost() const = 0;
    virtual int remotePort() const = 0;
};
