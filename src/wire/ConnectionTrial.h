#pragma once

#include "wire/ServerAddress.h"

#include <QObject>
#include <QTimer>

#include <memory>

class QSslSocket;

// Tries whether a server can be reached and tells what it meets: its name, its port, TLS and its
// certificate. Sends no line. Comes to an end within a fixed time.
class ConnectionTrial final : public QObject
{
    Q_OBJECT
public:
    struct Finding
    {
        bool good = false;
        QString text; // a sentence

        bool operator==(const Finding&) const = default;
    };

    explicit ConnectionTrial(QObject* parent = nullptr);
    ~ConnectionTrial() override;

    // Gives up a trial that is under way. The address is a valid one; the file names authorities
    // beside those of the system.
    void start(const ServerAddress& address, const QString& authoritiesFile);
    void cancel();
    bool isRunning() const { return m_socket != nullptr; }
    void setTimeLimit(int milliseconds) { m_limit.setInterval(milliseconds); }

Q_SIGNALS:
    void found(const ConnectionTrial::Finding& finding);
    void finished();

private:
    enum class Stage { Name, Port, Handshake };

    void tryPort(int port);
    void meetName();
    void meetPort();
    void meetCertificate();
    void fail();
    void expire();
    void end(const Finding& last);
    QString shown() const { return m_address.shownHost; }

    ServerAddress m_address;
    QString m_authoritiesFile;
    std::unique_ptr<QSslSocket> m_socket;
    Stage m_stage = Stage::Name;
    int m_port = 0;
    QTimer m_limit;
};
