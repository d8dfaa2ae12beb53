#include "support/ScriptedServer.h"

ScriptedServer::ScriptedServer(const QString& address, quint16 port)
    : m_server(std::make_unique<QTcpServer>())
{
    connect(m_server.get(), &QTcpServer::newConnection, this,
            [this] { take(m_server->nextPendingConnection()); });
    m_server->listen(QHostAddress(address), port);
}

ScriptedServer::ScriptedServer(const QString& address, quint16 port, const QSslConfiguration& tls)
{
    auto server = std::make_unique<QSslServer>();
    server->setSslConfiguration(tls);
    connect(server.get(), &QSslServer::pendingConnectionAvailable, this,
            [this] { take(m_server->nextPendingConnection()); });
    m_server = std::move(server);
    m_server->listen(QHostAddress(address), port);
}

void ScriptedServer::take(QTcpSocket* peer)
{
    ++m_connections;
    m_peer = peer;
    peer->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    m_peerHasGone = false;
    connect(peer, &QTcpSocket::readyRead, this, [this] { m_received += m_peer->readAll(); });
    connect(peer, &QTcpSocket::disconnected, this, [this] { m_peerHasGone = true; });
    m_received += peer->readAll(); // a handshake may have brought some
}

ScriptedServer::~ScriptedServer()
{
    if (m_peer)
        m_peer->disconnect(this);
}

bool ScriptedServer::isListening() const
{
    return m_server->isListening();
}

void ScriptedServer::stopListening()
{
    m_server->close();
}

void ScriptedServer::say(const QByteArray& bytes)
{
    m_peer->write(bytes);
    m_peer->flush();
}

void ScriptedServer::closePeer()
{
    m_peer->disconnectFromHost();
}
