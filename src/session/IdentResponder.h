#pragma once

#include <QObject>

class EventLoop;
class Handlers;
class MainView;
class Winsock;
struct SessionVariables;

// Answers the server's question for the user behind the connection (RFC 1413): one peer for each
// time the socket is set to listen. The answer goes out before the question is read, and a proper
// one follows it.
class IdentResponder final : public QObject
{
    Q_OBJECT
public:
    struct Parts
    {
        const SessionVariables& variables;
        const MainView& mainView;
        EventLoop& events;
        Winsock& ident;
    };

    IdentResponder(const Parts& parts, const Handlers& handlers);

private:
    void IDENT_ConnectionRequest(qintptr requestID);
    void IDENT_DataArrival();
    void send(const QString& text);
    void IDENT_Error(const QString& description);
    void show(const QString& text) const;

    Parts m_parts;
};
