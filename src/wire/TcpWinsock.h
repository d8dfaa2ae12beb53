#pragma once

#include "wire/Winsock.h"

#include <QHostAddress>

#include <memory>
#include <optional>

class QTcpServer;
class QTcpSocket;

// Winsock over the toolkit's sockets. DataArrival can be raised inside itself (a handler may
// yield), down to a fixed depth; beyond it data waits until the stack has unwound.
class TcpWinsock final : public Winsock
{
    Q_OBJECT
public:
    explicit TcpWinsock(QObject* parent = nullptr);
    ~TcpWinsock() override;

    // Where to connect from and listen; any address of the machine by default.
    void setLocalAddress(const QHostAddress& address) { m_localAddress = address; }

    State state() const override { return m_state; }
    void Connect() override;
    void Listen() override;
    void Accept(qintptr requestID) override;
    void Close() override;
    QString GetData() override;
    void SendData(const QString& text) override;
    void setEventsHeld(bool held) override;

    // Handlers of a flood may nest this deep.
    static constexpr int maximumNesting = 32;

private:
    void adopt(QTcpSocket* socket);
    void drop();
    void refusePendingRequest();
    void deliver();
    void scheduleDelivery();

    struct Failure
    {
        int number = 0;
        QString description;
    };

    QHostAddress m_localAddress{QHostAddress::Any};
    State m_state = Closed;
    std::unique_ptr<QTcpServer> m_server;
    QTcpSocket* m_socket = nullptr;
    qintptr m_pendingRequest = -1;
    bool m_answeringRequest = false;
    quint64 m_generation = 0; // a queued event of an older connection finds it changed
    int m_nesting = 0;
    bool m_held = false;
    bool m_deliveryScheduled = false;
    // Raised when everything that came before has been read.
    bool m_peerHasGone = false;
    std::optional<Failure> m_failure;
};
