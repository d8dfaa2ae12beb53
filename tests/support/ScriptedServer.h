#pragma once

#include <QtNetwork>

// A server in this process, on a loopback address of its own. It keeps what arrives and says what
// it is told.
class ScriptedServer final : public QObject
{
public:
    explicit ScriptedServer(const QString& address, quint16 port = 6667)
        : m_server(std::make_unique<QTcpServer>())
    {
        connect(m_server.get(), &QTcpServer::newConnection, this, [this] { take(); });
        m_server->listen(QHostAddress(address), port);
    }
    // By TLS with this certificate, if there is one.
    ScriptedServer(const QString& address, quint16 port, const QSslConfiguration& tls)
    {
        auto server = std::make_unique<QSslServer>();
        server->setSslConfiguration(tls);
        connect(server.get(), &QSslServer::pendingConnectionAvailable, this, [this] { take(); });
        m_server = std::move(server);
        m_server->listen(QHostAddress(address), port);
    }
    ~ScriptedServer() override
    {
        if (m_peer)
            m_peer->disconnect(this);
    }

    bool isListening() const { return m_server->isListening(); }
    // No longer takes new peers; the port can be refused.
    void stopListening() { m_server->close(); }

    int connections() const { return m_connections; }
    const QByteArray& received() const { return m_received; }
    bool peerHasGone() const { return m_peerHasGone; }

    void say(const QByteArray& bytes)
    {
        m_peer->write(bytes);
        m_peer->flush();
    }
    void closePeer() { m_peer->disconnectFromHost(); }

private:
    void take()
    {
        ++m_connections;
        m_peer = m_server->nextPendingConnection();
        m_peer->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        m_peerHasGone = false;
        connect(m_peer, &QTcpSocket::readyRead, this, [this] { m_received += m_peer->readAll(); });
        connect(m_peer, &QTcpSocket::disconnected, this, [this] { m_peerHasGone = true; });
        m_received += m_peer->readAll(); // a handshake may have brought some
    }

    std::unique_ptr<QTcpServer> m_server;
    QPointer<QTcpSocket> m_peer;
    QByteArray m_received;
    int m_connections = 0;
    bool m_peerHasGone = false;
};
