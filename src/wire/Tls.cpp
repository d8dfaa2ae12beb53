#include "wire/Tls.h"

#include <QLocale>
#include <QSslCertificate>
#include <QSslCipher>
#include <QSslError>
#include <QSslSocket>

namespace {

using namespace Qt::StringLiterals;

QString nameIn(const QStringList& names, const QString& otherwise)
{
    return names.isEmpty() ? otherwise : names.join(u", "_s);
}

QString ownerOf(const QSslCertificate& certificate)
{
    const QStringList names = certificate.subjectAlternativeNames().values(QSsl::DnsEntry);
    return nameIn(names, nameIn(certificate.subjectInfo(QSslCertificate::CommonName), u"nobody"_s));
}

QString issuerOf(const QSslCertificate& certificate)
{
    return nameIn(certificate.issuerInfo(QSslCertificate::CommonName),
                  nameIn(certificate.issuerInfo(QSslCertificate::Organization), u"nobody"_s));
}

QString dateOf(const QDateTime& time)
{
    return QLocale().toString(time.toLocalTime().date(), QLocale::ShortFormat);
}

// One sentence for each kind of fault that a certificate can have.
QString sentenceOf(const QSslError& error, const QSslCertificate& certificate, const QString& host)
{
    switch (error.error()) {
    case QSslError::SelfSignedCertificate:
    case QSslError::SelfSignedCertificateInChain:
    case QSslError::UnableToGetIssuerCertificate:
    case QSslError::UnableToGetLocalIssuerCertificate:
    case QSslError::UnableToVerifyFirstCertificate:
    case QSslError::CertificateUntrusted:
        return "The certificate of "_L1 + host + " is issued by "_L1 + issuerOf(certificate) +
               ", an authority that is not known here. For a private network, name the file of its "
               "authority in the setting connect/cafile."_L1;
    case QSslError::HostNameMismatch:
        return "The certificate is for "_L1 + ownerOf(certificate) + ", not for "_L1 + host +
               ". Check the name in the address; it may be another server that answers."_L1;
    case QSslError::CertificateExpired:
        return "The certificate of "_L1 + host + " has expired on "_L1 +
               dateOf(certificate.expiryDate()) +
               ". Whoever runs the server must renew it; check this computer's date, too."_L1;
    case QSslError::CertificateNotYetValid:
        return "The certificate of "_L1 + host + " is not valid before "_L1 +
               dateOf(certificate.effectiveDate()) + ". Check this computer's date."_L1;
    default:
        return "The certificate of "_L1 + host + " cannot be trusted: "_L1 + error.errorString() +
               u'.';
    }
}

QString noTls(const QString& host, int port)
{
    return host + " does not speak TLS on port "_L1 + QString::number(port) +
           ". Check the port; an address that begins with irc:// goes without TLS, and then "
           "everything goes in clear."_L1;
}

} // namespace

QSslConfiguration tls::configuration(const QString& authoritiesFile, QString& error)
{
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setProtocol(QSsl::TlsV1_2OrLater);
    configuration.setPeerVerifyMode(QSslSocket::VerifyPeer);
    if (!QSslSocket::supportsSsl())
        error = u"There is no TLS on this computer: the library for it is missing."_s;
    else if (!authoritiesFile.isEmpty() &&
             !configuration.addCaCertificates(authoritiesFile, QSsl::Pem,
                                              QSslCertificate::PatternSyntax::FixedString))
        error = "The file "_L1 + authoritiesFile +
                " of the setting connect/cafile has no certificate that can be read."_L1;
    return configuration;
}

QString tls::trouble(const QSslSocket& socket, const QString& host, int port)
{
    QStringList sentences;
    for (const QSslError& error : socket.sslHandshakeErrors()) {
        const QString sentence = sentenceOf(error, socket.peerCertificate(), host);
        if (!sentences.contains(sentence))
            sentences += sentence;
    }
    if (!sentences.isEmpty())
        return sentences.join(u' ');
    const QString reason = socket.errorString();
    const bool answersInClear = reason.contains("wrong version number"_L1) ||
                                reason.contains("packet length"_L1) ||
                                reason.contains("unknown protocol"_L1);
    if (answersInClear || socket.error() == QAbstractSocket::RemoteHostClosedError)
        return noTls(host, port);
    return "No private line to "_L1 + host + " came about: "_L1 + reason;
}

QString tls::noHandshake(const QString& host, int port)
{
    return host + " has not answered in TLS for "_L1 +
           QString::number(handshakeMilliseconds / 1000) + " seconds. "_L1 + noTls(host, port);
}

LinePrivacy tls::privacyOf(const QSslSocket& socket)
{
    const QSslCertificate certificate = socket.peerCertificate();
    const QSslCipher cipher = socket.sessionCipher();
    return {cipher.protocolString(), cipher.name(), ownerOf(certificate), issuerOf(certificate),
            certificate.expiryDate()};
}
