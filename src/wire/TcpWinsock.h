#pragma once

#include "wire/Winsock.h"

#include <QHostAddress>

#include <memory>
#include <optional>

class QSslSocket;
class QTcpServer;
class QTcpSocket;

// Winsock over the toolkit's sockets. While a handler of DataArrival runs, what else arrives waits
// until it is done, however often it yields: the order of arrival is the order of handling. Only a
// LetThrough opens one more level.
class TcpWinsock final : public Winsock
{
    Q_OBJECT
public:
    explicit TcpWinsock(QObject* parent = nullptr);
    ~TcpWinsock() override;

    // Where to connect from and listen; any address of the machine by default.
    void setLocalAddress(const QHostAddress& address) { m_localAddress = address; }
    void setHandshakeTime(int milliseconds) { m_handshakeTime = milliseconds; }

    State state() const override { return m_state; }
    void Connect() override;
    void Listen() override;
    void Accept(qintptr requestID) override;
    void Close() override;
    QByteArray GetData() override;
    void SendData(const QByteArray& bytes) override;
    void setEventsHeld(bool held) override;

    class LetThrough;

private:
    void connectByTls(QSslSocket* socket);
    void failHandshake(const QString& description);
    void stand();
    void adopt(QTcpSocket* socket);
    void drop();
    void refusePendingRequest();
    qint64 waitingBytes() const;
    void raiseDataArrival(qint64 waiting);
    void deliver();
    void scheduleDelivery();

    struct Failure
    {
        int number = 0;
        QString description;
    };

    QHostAddress m_localAddress{QHostAddress::Any};
    int m_handshakeTime = tls::handshakeMilliseconds;
    State m_state = Closed;
    std::unique_ptr<QTcpServer> m_server;
    QTcpSocket* m_socket = nullptr;
    qintptr m_pendingRequest = -1;
    bool m_answeringRequest = false;
    quint64 m_generation = 0; // a queued event of an older connection finds it changed
    int m_nesting = 0;        // handlers of DataArrival that run, one inside the other
    int m_maximumNesting = 1;
    bool m_held = false;
    bool m_inHandshake = false; // from Connect() on: until it is done, there is nothing to read
    bool m_deliveryScheduled = false;
    // Raised when everything that came before has been read.
    bool m_peerHasGone = false;
    std::optional<Failure> m_failure;
};

// Stands while something keeps the running handler from ending, a box that waits for the user: what
// arrives is raised inside that handler meanwhile. Outside of a handler it changes nothing. They
// end in the reverse order of their beginning.
class TcpWinsock::LetThrough final
{
public:
    explicit LetThrough(TcpWinsock& socket);
    ~LetThrough() { m_socket.m_maximumNesting = m_before; }
    Q_DISABLE_COPY_MOVE(LetThrough)

private:
    TcpWinsock& m_socket;
    int m_before;
};
