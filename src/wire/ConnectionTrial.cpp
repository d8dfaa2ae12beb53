#include "wire/ConnectionTrial.h"

#include "wire/HousePorts.h"
#include "wire/Tls.h"

#include <QHostAddress>
#include <QLocale>
#include <QNetworkProxy>
#include <QSslSocket>

namespace {

using namespace Qt::StringLiterals;

constexpr int limit = 10'000;

bool isNumeric(const QString& host)
{
    return !QHostAddress(host).isNull();
}

QString seconds(int milliseconds)
{
    return QString::number(milliseconds / 1000) + " seconds"_L1;
}

} // namespace

ConnectionTrial::ConnectionTrial(QObject* parent)
    : QObject(parent)
{
    m_limit.setSingleShot(true);
    m_limit.setInterval(limit);
    connect(&m_limit, &QTimer::timeout, this, [this] { expire(); });
}

ConnectionTrial::~ConnectionTrial() = default;

void ConnectionTrial::start(const ServerAddress& address, const QString& authoritiesFile)
{
    cancel();
    m_address = address;
    m_authoritiesFile = authoritiesFile;
    m_stage = Stage::Name;
    m_limit.start();
    tryPort(address.isStandard() ? address.port : house_ports::first);
}

void ConnectionTrial::cancel()
{
    m_limit.stop();
    if (QSslSocket* socket = m_socket.release()) {
        socket->disconnect();
        socket->abort();
        socket->deleteLater(); // it may be its own signal that ends it
    }
}

void ConnectionTrial::tryPort(int port)
{
    m_port = port;
    m_socket = std::make_unique<QSslSocket>();
    QSslSocket* socket = m_socket.get();
    socket->setProxy(QNetworkProxy::NoProxy);
    connect(socket, &QSslSocket::hostFound, this, [this] { meetName(); });
    connect(socket, &QSslSocket::connected, this, [this] { meetPort(); });
    connect(socket, &QSslSocket::encrypted, this, [this] { meetCertificate(); });
    connect(socket, &QSslSocket::errorOccurred, this, [this] { fail(); });
    if (!m_address.tls) {
        socket->connectToHost(m_address.host, static_cast<quint16>(port));
        return;
    }
    QString error;
    socket->setSslConfiguration(tls::configuration(m_authoritiesFile, error));
    if (error.isEmpty())
        socket->connectToHostEncrypted(m_address.host, static_cast<quint16>(port));
    else
        end({false, error});
}

void ConnectionTrial::meetName()
{
    if (m_stage == Stage::Name && !isNumeric(m_address.host))
        Q_EMIT found({true, "There is a server named "_L1 + shown() + u'.'});
    m_stage = Stage::Port;
}

void ConnectionTrial::meetPort()
{
    const Finding open{true, "Port "_L1 + QString::number(m_port) + " is open."_L1};
    if (!m_address.tls) {
        end(open);
        return;
    }
    m_stage = Stage::Handshake;
    Q_EMIT found(open);
}

void ConnectionTrial::meetCertificate()
{
    const LinePrivacy privacy = tls::privacyOf(*m_socket);
    Q_EMIT found({true, "The line is private: "_L1 + privacy.protocol + u'.'});
    end({true, "The certificate is for "_L1 + privacy.subject + ", issued by "_L1 + privacy.issuer +
                   ", good until "_L1 +
                   QLocale().toString(privacy.expiry.toLocalTime().date(), QLocale::ShortFormat) +
                   u'.'});
}

void ConnectionTrial::fail()
{
    const QString port = QString::number(m_port);
    const auto told = [&]() -> QString {
        switch (m_socket->error()) {
        case QAbstractSocket::HostNotFoundError:
            return "There is no server named "_L1 + shown() + u'.';
        case QAbstractSocket::ConnectionRefusedError:
            return "Nothing listens on port "_L1 + port + u'.';
        default:
            return m_stage == Stage::Handshake
                       ? tls::trouble(*m_socket, shown(), m_port)
                       : QString("Port "_L1 + port + " cannot be reached: "_L1 +
                                 m_socket->errorString());
        }
    }();
    const bool another =
        !m_address.isStandard() && m_port == house_ports::first && m_stage != Stage::Name;
    if (!another) {
        end({false, told});
        return;
    }
    Q_EMIT found({false, told});
    m_socket->disconnect();
    m_socket.release()->deleteLater();
    tryPort(house_ports::fallback);
}

void ConnectionTrial::expire()
{
    const QString waited = " within "_L1 + seconds(m_limit.interval()) + u'.';
    switch (m_stage) {
    case Stage::Name:
        end({false, "Nobody tells where "_L1 + shown() + " is"_L1 + waited});
        break;
    case Stage::Port:
        end({false, "Port "_L1 + QString::number(m_port) + " does not answer"_L1 + waited});
        break;
    case Stage::Handshake:
        end({false, "No TLS is spoken on port "_L1 + QString::number(m_port) + waited});
        break;
    }
}

void ConnectionTrial::end(const Finding& last)
{
    Q_EMIT found(last);
    cancel();
    Q_EMIT finished();
}
