#include "support/ScriptedServer.h"

#include <QTcpServer>
#include <QTcpSocket>

ScriptedServer::ScriptedServer(const QString& address, quint16 port)
    : m_server(std::make_unique<QTcpServer>())
{
    connect(m_server.get(), &QTcpServer::newConnection, this, [this] {
        ++m_connections;
        m_peer = m_server->nextPendingConnection();
        m_peer->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        m_peerHasGone = false;
        connect(m_peer, &QTcpSocket::readyRead, this, [this] { m_received += m_peer->readAll(); });
        connect(m_peer, &QTcpSocket::disconnected, this, [this] { m_peerHasGone = true; });
    });
    m_server->listen(QHostAddress(address), port);
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
