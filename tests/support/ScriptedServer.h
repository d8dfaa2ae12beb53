#pragma once

#include <QtNetwork>

// A server in this process, on a loopback address of its own. It keeps what arrives and says what
// it is told.
class ScriptedServer final : public QObject
{
public:
    explicit ScriptedServer(const QString& address, quint16 port = 6667);
    // By TLS with this certificate, if there is one.
    ScriptedServer(const QString& address, quint16 port, const QSslConfiguration& tls);
    ~ScriptedServer() override;

    bool isListening() const;
    // No longer takes new peers; the port can be refused.
    void stopListening();

    int connections() const { return m_connections; }
    const QByteArray& received() const { return m_received; }
    bool peerHasGone() const { return m_peerHasGone; }

    void say(const QByteArray& bytes);
    void closePeer();

private:
    void take(QTcpSocket* peer);

    std::unique_ptr<QTcpServer> m_server;
    QPointer<QTcpSocket> m_peer;
    QByteArray m_received;
    int m_connections = 0;
    bool m_peerHasGone = false;
};
