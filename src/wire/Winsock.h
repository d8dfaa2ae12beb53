#pragma once

#include "wire/Tls.h"

#include <QByteArray>
#include <QObject>
#include <QString>

// One TCP socket as a control: a client, or a listener that accepts one peer on itself (RFC 793).
// It carries bytes; what letters they are is told by Charset. Nothing throws: what cannot be done
// leaves the state as it is or raises Error.
class Winsock : public QObject
{
    Q_OBJECT
public:
    enum State {
        Closed = 0,
        Listening = 2,
        ResolvingHost = 4,
        Connecting = 6,
        Connected = 7,
        Closing = 8, // the peer has gone
        Failed = 9,
    };

    using QObject::QObject;

    QString RemoteHost;
    int RemotePort = 0;
    int LocalPort = 0;
    bool Tls = false;        // Connect() means TLS and nothing else
    QString AuthoritiesFile; // beside those of the system, for TLS; may be empty

    // Of the connection that stands; from ConnectEvent to its end.
    const LinePrivacy& privacy() const { return m_privacy; }

    virtual State state() const = 0;
    virtual void Connect() = 0;
    // Listens on LocalPort; a port that cannot be had leaves the state at Closed.
    virtual void Listen() = 0;
    // Takes the peer of a ConnectionRequest; RemotePort becomes its port.
    virtual void Accept(qintptr requestID) = 0;
    // Queued events of the connection die with it; what was sent still leaves.
    virtual void Close() = 0;
    // All that has arrived.
    virtual QByteArray GetData() = 0;
    virtual void SendData(const QByteArray& bytes) = 0;

    // While held, events wait (a box is up that the session must not answer behind).
    virtual void setEventsHeld(bool held) = 0;

Q_SIGNALS:
    void ConnectEvent();
    void CloseEvent();
    void DataArrival(qint64 bytesTotal);
    void ErrorEvent(int number, const QString& description);
    void ConnectionRequest(qintptr requestID);
    void PrivacyChanged();

protected:
    void setPrivacy(const LinePrivacy& privacy)
    {
        const bool changes = privacy.isPrivate() || m_privacy.isPrivate();
        m_privacy = privacy;
        if (changes)
            Q_EMIT PrivacyChanged();
    }

private:
    LinePrivacy m_privacy;
};

// Holds a socket's events back for the length of a block.
class HeldEvents final
{
public:
    explicit HeldEvents(Winsock& socket)
        : m_socket(socket)
    {
        m_socket.setEventsHeld(true);
    }
    ~HeldEvents() { m_socket.setEventsHeld(false); }
    Q_DISABLE_COPY_MOVE(HeldEvents)

private:
    Winsock& m_socket;
};
