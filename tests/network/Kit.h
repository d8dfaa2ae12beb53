#pragma once

#include "support/TestClient.h"

#include <QtNetwork>
#include <QtTest>

// Who meets whom on a real network. The server asks those who come from 127.0.1.x no ident
// question: whoever else listens on this machine for all addresses cannot answer for them.
inline QString quietAddress()
{
    static int number = 1;
    return QStringLiteral("127.0.1.%1").arg(++number);
}

constexpr int patience = 20'000; // until what a server does must have been seen

// Somebody who knows nothing but lines, says what he is told and keeps what he hears.
class Peer final : public QObject
{
public:
    Peer(const QString& host, const QByteArray& nick, quint16 port = 6667)
    {
        connect(&m_socket, &QTcpSocket::readyRead, this, [this] { read(); });
        m_socket.setProxy(QNetworkProxy::NoProxy);
        m_socket.bind(QHostAddress(quietAddress()));
        m_socket.connectToHost(host, port);
        send("NICK " + nick + "\r\nUSER " + nick + " 0 * :A peer");
    }

    // In the room; with a password as the one whom the services know by it.
    void enter(const QByteArray& room, const QByteArray& password = {})
    {
        must(" 001 ");
        if (!password.isEmpty()) {
            send("PRIVMSG NickServ :IDENTIFY " + password);
            must(" 900 ");
        }
        send("JOIN " + room);
        must(" 366 ");
    }
    void send(const QByteArray& line) { m_socket.write(line + "\r\n"); }
    bool has(const QByteArray& text) const { return m_heard.contains(text); }
    bool hears(const QByteArray& text)
    {
        return QTest::qWaitFor([&] { return has(text); }, patience);
    }
    void forget() { m_heard.clear(); }
    const QByteArray& heard() const { return m_heard; }

private:
    void must(const QByteArray& text)
    {
        if (!hears(text))
            QTest::qFail(m_heard.constData(), __FILE__, __LINE__);
    }
    void read()
    {
        while (m_socket.canReadLine()) {
            const QByteArray line = m_socket.readLine();
            if (line.startsWith("PING "))
                send("PONG " + line.mid(5).trimmed());
            else
                m_heard += line;
        }
    }

    QTcpSocket m_socket;
    QByteArray m_heard;
};

inline bool isThere(TestClient& client, const QString& nick)
{
    return QTest::qWaitFor([&] { return client.chatters().contains(nick); }, patience);
}

// The window of a private conversation; none while there is no such conversation.
inline QueryForm* talkWith(TestClient& client, const QString& nick)
{
    for (const auto& place : client.chatRoom().windows.queryFactory.places()) {
        if (place->QueryNick == nick && place->window())
            return place->window();
    }
    return nullptr;
}

inline void say(QueryForm& window, const QString& text)
{
    window.DataOut().setText(text);
    QTest::keyClick(&window.DataOut(), Qt::Key_Return);
}
