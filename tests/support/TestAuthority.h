#pragma once

#include <QtNetwork>

// An authority of this test alone, and the certificates it issues.
class TestAuthority final
{
public:
    TestAuthority()
    {
        m_isMade = run({"req", "-x509", "-newkey", "ec", "-pkeyopt", curve, "-nodes", "-keyout",
                        "ca.key", "-out", "ca.pem", "-days", "30", "-subj", "/CN=Test Authority"});
    }

    bool isMade() const { return m_isMade; }
    QString file() const { return m_folder.filePath(QStringLiteral("ca.pem")); }

    // A server's certificate for these names, "IP:127.0.0.1,DNS:irc.example".
    QSslConfiguration issue(const QByteArray& names, int days = 30)
    {
        QFile extensions(m_folder.filePath(QStringLiteral("extensions")));
        if (!extensions.open(QIODevice::WriteOnly))
            return {};
        extensions.write("subjectAltName=" + names + '\n');
        extensions.close();
        run({"req", "-new", "-newkey", "ec", "-pkeyopt", curve, "-nodes", "-keyout", "key.pem",
             "-out", "request", "-subj", "/CN=Test Server"});
        run({"x509", "-req", "-in", "request", "-CA", "ca.pem", "-CAkey", "ca.key",
             "-CAcreateserial", "-days", QByteArray::number(days), "-extfile", "extensions", "-out",
             "server.pem"});
        QSslConfiguration configuration;
        QFile key(m_folder.filePath(QStringLiteral("key.pem")));
        if (key.open(QIODevice::ReadOnly))
            configuration.setPrivateKey(QSslKey(key.readAll(), QSsl::Ec));
        configuration.setLocalCertificateChain(
            QSslCertificate::fromPath(m_folder.filePath(QStringLiteral("server.pem"))));
        configuration.setPeerVerifyMode(QSslSocket::VerifyNone);
        return configuration;
    }

private:
    static constexpr auto curve = "ec_paramgen_curve:prime256v1";

    bool run(const QByteArrayList& arguments) const
    {
        QStringList words;
        for (const QByteArray& argument : arguments)
            words += QString::fromLatin1(argument);
        QProcess openssl;
        openssl.setWorkingDirectory(m_folder.path());
        openssl.start(QStringLiteral("openssl"), words);
        return openssl.waitForFinished() && openssl.exitStatus() == QProcess::NormalExit &&
               openssl.exitCode() == 0;
    }

    QTemporaryDir m_folder;
    bool m_isMade = false;
};
