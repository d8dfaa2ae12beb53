#include "wire/TcpWinsock.h"

#include <QNetworkProxy>
#include <QSslSocket>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>

#include <functional>
#include <utility>

#include <unistd.h>

namespace {

// Reading is paced by this: what does not fit stays with the sender until it is asked for.
constexpr qint64 readBufferSize = 64 * 1024;

// How long a closed connection may still take to hand over what was sent on it.
constexpr int lingerMilliseconds = 3000;

class RequestServer final : public QTcpServer
{
public:
    explicit RequestServer(std::function<void(qintptr)> request)
        : m_request(std::move(request))
    {
    }

protected:
    void incomingConnection(qintptr descriptor) override { m_request(descriptor); }

private:
    std::function<void(qintptr)> m_request;
};

void letGo(QTcpSocket* socket)
{
    socket->disconnect();
    socket->setParent(nullptr);
    if (socket->state() == QAbstractSocket::ConnectedState && socket->bytesToWrite() > 0) {
        QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        QTimer::singleShot(lingerMilliseconds, socket, &QObject::deleteLater);
        socket->disconnectFromHost();
        return;
    }
    socket->abort();
    socket->deleteLater();
}

} // namespace

TcpWinsock::TcpWinsock(QObject* parent)
    : Winsock(parent)
{
}

TcpWinsock::~TcpWinsock()
{
    drop();
}

void TcpWinsock::Connect()
{
    drop();
    auto* tlsSocket = Tls ? new QSslSocket(this) : nullptr;
    QTcpSocket* socket = Tls ? tlsSocket : new QTcpSocket(this);
    adopt(socket);
    if (m_localAddress != QHostAddress(QHostAddress::Any))
        socket->bind(m_localAddress);
    m_state = ResolvingHost;
    connect(socket, &QTcpSocket::hostFound, this, [this] { m_state = Connecting; });
    const auto stands = [this, generation = m_generation] {
        if (generation == m_generation && !m_failure)
            stand();
    };
    if (tlsSocket) {
        connect(tlsSocket, &QSslSocket::encrypted, this, stands, Qt::QueuedConnection);
        connectByTls(tlsSocket);
        return;
    }
    connect(socket, &QTcpSocket::connected, this, stands, Qt::QueuedConnection);
    socket->connectToHost(RemoteHost, static_cast<quint16>(RemotePort));
}

void TcpWinsock::connectByTls(QSslSocket* socket)
{
    m_inHandshake = true;
    QString error;
    socket->setSslConfiguration(tls::configuration(AuthoritiesFile, error));
    if (!error.isEmpty()) {
        failHandshake(error);
        return;
    }
    auto* limit = new QTimer(socket);
    limit->setSingleShot(true);
    connect(limit, &QTimer::timeout, this, [this, generation = m_generation] {
        if (generation == m_generation) // a socket that was let go may live a little longer
            failHandshake(tls::noHandshake(RemoteHost, RemotePort));
    });
    connect(socket, &QSslSocket::encrypted, limit, &QTimer::stop);
    connect(socket, &QTcpSocket::connected, limit,
            [this, limit] { limit->start(m_handshakeTime); });
    socket->connectToHostEncrypted(RemoteHost, static_cast<quint16>(RemotePort));
}

void TcpWinsock::failHandshake(const QString& description)
{
    if (m_failure)
        return;
    m_failure = Failure{QAbstractSocket::SslHandshakeFailedError, description};
    m_socket->disconnect(this); // what it says to its own end tells nothing more
    m_socket->abort();
    scheduleDelivery();
}

void TcpWinsock::stand()
{
    m_inHandshake = false;
    m_state = Connected;
    if (const auto* socket = qobject_cast<QSslSocket*>(m_socket))
        setPrivacy(tls::privacyOf(*socket));
    Q_EMIT ConnectEvent();
}

void TcpWinsock::Listen()
{
    drop();
    // A queued delivery is what lets the handler close the listener it was called from.
    m_server = std::make_unique<RequestServer>([this](qintptr descriptor) {
        if (m_pendingRequest != -1) {
            ::close(static_cast<int>(descriptor));
            return;
        }
        m_pendingRequest = descriptor;
        QMetaObject::invokeMethod(
            m_server.get(),
            [this, descriptor, generation = m_generation] {
                if (generation != m_generation)
                    return;
                m_answeringRequest = true; // its handler closes the listener, not the request
                Q_EMIT ConnectionRequest(descriptor);
                m_answeringRequest = false;
                refusePendingRequest();
            },
            Qt::QueuedConnection);
    });
    m_server->setProxy(QNetworkProxy::NoProxy);
    if (m_server->listen(m_localAddress, static_cast<quint16>(LocalPort)))
        m_state = Listening;
    else
        m_server.reset();
}

void TcpWinsock::Accept(qintptr requestID)
{
    if (m_pendingRequest != requestID)
        return;
    m_pendingRequest = -1;
    auto* socket = new QTcpSocket(this);
    if (!socket->setSocketDescriptor(requestID)) {
        delete socket;
        ::close(static_cast<int>(requestID));
        return;
    }
    adopt(socket);
    m_state = Connected;
    RemotePort = socket->peerPort();
}

void TcpWinsock::Close()
{
    drop();
}

QByteArray TcpWinsock::GetData()
{
    return m_socket && !m_inHandshake ? m_socket->readAll() : QByteArray();
}

void TcpWinsock::SendData(const QByteArray& bytes)
{
    if (!m_socket || m_state != Connected)
        return;
    m_socket->write(bytes);
    m_socket->flush(); // so that a line sent just before Close() is on its way
}

void TcpWinsock::setEventsHeld(bool held)
{
    m_held = held;
    if (!held)
        scheduleDelivery();
}

void TcpWinsock::adopt(QTcpSocket* socket)
{
    m_socket = socket;
    socket->setProxy(QNetworkProxy::NoProxy);
    socket->setReadBufferSize(readBufferSize);
    socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    // readyRead() is not raised again inside its own slot, hence queued.
    connect(socket, &QTcpSocket::readyRead, this, &TcpWinsock::deliver, Qt::QueuedConnection);
    connect(
        socket, &QTcpSocket::errorOccurred, this,
        [this, generation = m_generation](QAbstractSocket::SocketError error) {
            if (generation != m_generation)
                return;
            const auto* inTls = qobject_cast<QSslSocket*>(m_socket);
            if (m_inHandshake && inTls && inTls->mode() != QSslSocket::UnencryptedMode)
                return failHandshake(tls::trouble(*inTls, RemoteHost, RemotePort));
            // A reset, too. A session that stood and was ended is over, however the other side
            // ends it: whoever was thrown out by a reset must not come back by himself.
            if (error == QAbstractSocket::RemoteHostClosedError)
                m_peerHasGone = true;
            else
                m_failure = Failure{error, m_socket->errorString()};
            deliver();
        },
        Qt::QueuedConnection);
}

void TcpWinsock::refusePendingRequest()
{
    if (m_pendingRequest != -1)
        ::close(static_cast<int>(std::exchange(m_pendingRequest, -1)));
}

void TcpWinsock::drop()
{
    ++m_generation;
    m_state = Closed;
    m_inHandshake = false;
    setPrivacy({});
    m_peerHasGone = false;
    m_failure.reset();
    m_deliveryScheduled = false;
    if (!m_answeringRequest)
        refusePendingRequest();
    if (m_server) {
        m_server->close(); // the port is free again at once
        m_server.release()->deleteLater();
    }
    if (m_socket)
        letGo(std::exchange(m_socket, nullptr));
}

qint64 TcpWinsock::waitingBytes() const
{
    return m_inHandshake ? 0 : m_socket->bytesAvailable();
}

void TcpWinsock::raiseDataArrival(qint64 waiting)
{
    ++m_nesting;
    Q_EMIT DataArrival(waiting);
    --m_nesting;
    scheduleDelivery();
}

void TcpWinsock::deliver()
{
    m_deliveryScheduled = false;
    if (!m_socket || m_held)
        return;
    if (m_nesting >= m_maximumNesting)
        return; // the handler that ends schedules the rest
    if (const qint64 waiting = waitingBytes(); waiting > 0) {
        raiseDataArrival(waiting);
        return;
    }
    if (m_failure) {
        const Failure failure = *std::exchange(m_failure, std::nullopt);
        m_state = Failed;
        setPrivacy({});
        Q_EMIT ErrorEvent(failure.number, failure.description);
    } else if (m_peerHasGone && m_state == Connected) {
        m_state = Closing;
        setPrivacy({});
        Q_EMIT CloseEvent();
    }
}

void TcpWinsock::scheduleDelivery()
{
    if (!m_socket || m_deliveryScheduled)
        return;
    if (waitingBytes() == 0 && !m_peerHasGone && !m_failure)
        return;
    m_deliveryScheduled = true;
    QMetaObject::invokeMethod(
        m_socket, [this] { deliver(); }, Qt::QueuedConnection);
}

TcpWinsock::LetThrough::LetThrough(TcpWinsock& socket)
    : m_socket(socket)
    , m_before(std::exchange(socket.m_maximumNesting, socket.m_nesting + 1))
{
    m_socket.scheduleDelivery(); // of what waits for the handler already
}
