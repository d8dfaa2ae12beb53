#pragma once

#include <QDateTime>
#include <QSslConfiguration>
#include <QString>

class QSslSocket;

// How private a line to a server is; by default not at all.
struct LinePrivacy
{
    bool isPrivate() const { return !protocol.isEmpty(); }

    QString protocol; // "TLSv1.3"
    QString cipher;
    QString subject; // whose certificate
    QString issuer;  // and who says so
    QDateTime expiry;
};

// TLS 1.2 or newer, with chain and name verified.
namespace tls {

constexpr int handshakeMilliseconds = 10'000;

// With the system's authorities and those of a PEM file, if one is named. A file that has none sets
// the error, a sentence.
QSslConfiguration configuration(const QString& authoritiesFile, QString& error);

// What keeps this socket from being connected, in plain words, and what can be done about it.
QString trouble(const QSslSocket& socket, const QString& host, int port);
QString noHandshake(const QString& host, int port); // in time

LinePrivacy privacyOf(const QSslSocket& socket);

} // namespace tls
