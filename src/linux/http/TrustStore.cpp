#include "linux/http/TrustStore.h"

#include <QDir>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

// Many environments name the system's own store. It counts anyway, and reading hundreds of
// certificates takes long enough to be felt.
bool isSystemStore(const QString& path) {
    const QString canonical = QFileInfo(path).canonicalFilePath();
    return canonical == u"/etc/ssl/certs"_s || canonical == u"/etc/ssl/certs/ca-certificates.crt"_s;
}

} // namespace

QList<QSslCertificate> environmentCertificates() {
    QList<QSslCertificate> certificates;
    const QString file = qEnvironmentVariable("SSL_CERT_FILE");
    if (!file.isEmpty() && !isSystemStore(file))
        certificates += QSslCertificate::fromPath(file);
    const QStringList folders =
        qEnvironmentVariable("SSL_CERT_DIR").split(u':', Qt::SkipEmptyParts);
    for (const QString& folder : folders) {
        if (isSystemStore(folder))
            continue;
        const QFileInfoList files = QDir(folder).entryInfoList(QDir::Files);
        for (const QFileInfo& entry : files)
            certificates += QSslCertificate::fromPath(entry.filePath());
    }
    return certificates;
}

std::optional<QSslConfiguration> environmentTrust() {
    const QList<QSslCertificate> certificates = environmentCertificates();
    if (certificates.isEmpty())
        return std::nullopt;
    // Naming any certificate switches off that the system's are looked up when needed, so they
    // have to be named as well.
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setCaCertificates(QSslConfiguration::systemCaCertificates() + certificates);
    return configuration;
}

} // namespace lumora
