#include "wire/ConnectionTrial.h"

#include <QHostAddress>
#include <QLocale>
#include <QNetworkProxy>
#include <QSslCertificate>
#include <QSslCipher>
#include <QSslSocket>

namespace {

using namespace Qt::StringLiterals;

constexpr int limit = 10'000;
constexpr int housePort = 6667;
constexpr int houseFallback = 8867;

bool isNumeric(const QString& host)
{
    return !QHostAddress(host).isNull();
}

QString seconds(int milliseconds)
{
    return QString::number(milliseconds / 1000) + " seconds"_L1;
}

QString firstOf(const QStringList& names, const QString& otherwise)
{
    return names.isEmpty() ? otherwise : names.first();
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

void ConnectionTrial::start(const ServerAddress& address, const QSslConfiguration& tls)
{
    cancel();
    m_address = address;
    m_tls = tls;
    m_stage = Stage::Name;
    m_limit.start();
    tryPort(address.isStandard() ? address.port : housePort);
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
    if (m_address.tls) {
        socket->setSslConfiguration(m_tls);
        socket->connectToHostEncrypted(m_address.host, static_cast<quint16>(port));
    } else {
        socket->connectToHost(m_address.host, static_cast<quint16>(port));
    }
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
    const QSslCertificate certificate = m_socket->peerCertificate();
    const QString owner = firstOf(certificate.subjectInfo(QSslCertificate::CommonName), shown());
    const QString issuer =
        firstOf(certificate.issuerInfo(QSslCertificate::Organization),
                firstOf(certificate.issuerInfo(QSslCertificate::CommonName), u"?"_s));
    Q_EMIT found(
        {true, "The line is private: "_L1 + m_socket->sessionCipher().protocolString() + u'.'});
    end({true, "The certificate of "_L1 + owner + " is good until "_L1 +
                   QLocale().toString(certificate.expiryDate().date(), QLocale::ShortFormat) +
                   ", says "_L1 + issuer + u'.'});
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
                       ? QString("TLS fails on port "_L1 + port + ": "_L1 + m_socket->errorString())
                       : QString("Port "_L1 + port + " cannot be reached: "_L1 +
                                 m_socket->errorString());
        }
    }();
    const bool another = !m_address.isStandard() && m_port == housePort && m_stage != Stage::Name;
    if (!another) {
        end({false, told});
        return;
    }
    Q_EMIT found({false, told});
    m_socket->disconnect();
    m_socket.release()->deleteLater();
    tryPort(houseFallback);
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
