#pragma once

#include <QString>

// Where every line for the server goes. It comes without its end, and while there is no
// connection it is dropped in silence.
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
