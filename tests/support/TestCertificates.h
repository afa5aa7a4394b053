#pragma once

#include <QSslConfiguration>
#include <QString>
#include <QTemporaryDir>

namespace lumora::tests {

/// A certificate authority of the test's own and a server certificate for 127.0.0.1 by it, in a
/// temporary folder. Made with the `openssl` program; throws when that fails.
class TestCertificates {
public:
    enum class Server {
        Valid,
        Expired,     ///< for years
        NotYetValid, ///< for decades
        SelfSigned,  ///< by nobody but itself
        OtherHost,   ///< for service.invalid
        WeakKey,     ///< RSA with 1024 bits
        WeakDigest,  ///< signed over SHA-1
    };

    explicit TestCertificates(Server server = Server::Valid);

    /// The authority's certificate, alone in its folder.
    QString authorityFile() const { return path(QStringLiteral("authority/ca.pem")); }

    QString authorityFolder() const { return path(QStringLiteral("authority")); }

    /// What a server needs to identify itself as 127.0.0.1, or as whom the certificate is for.
    QSslConfiguration serverConfiguration() const;

private:
    QString path(const QString& name) const { return m_folder.filePath(name); }

    QTemporaryDir m_folder;
};

} // namespace lumora::tests
