#include "support/TestCertificates.h"

#include "support/Patience.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSslCertificate>
#include <QSslKey>

#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

namespace lumora::tests {

namespace {

void openssl(const QString& arguments, const QString& folder) {
    QProcess process;
    process.setWorkingDirectory(folder);
    process.start(u"openssl"_s, arguments.split(u' '));
    if (!process.waitForFinished(patience) || process.exitCode() != 0)
        throw std::runtime_error(process.readAllStandardError().toStdString());
}

} // namespace

TestCertificates::TestCertificates(Server server) {
    const QString folder = m_folder.path();
    QDir(folder).mkdir(u"authority"_s);
    QFile extension(path(u"server.ext"_s));
    if (!extension.open(QIODevice::WriteOnly))
        throw std::runtime_error("no temporary file");
    extension.write("subjectAltName=IP:127.0.0.1\n");
    extension.close();

    const QString key = u"-newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes"_s;
    openssl(
        u"req -x509 -days 2 -subj /CN=Test-Authority -keyout ca.key -out authority/ca.pem "_s + key,
        folder);
    openssl(u"req -subj /CN=127.0.0.1 -keyout server.key -out server.csr "_s + key, folder);
    openssl(
        u"x509 -req -days %1 -in server.csr -CA authority/ca.pem -CAkey ca.key -CAcreateserial "
        "-CAserial ca.srl -extfile server.ext -out server.pem"_s.arg(
            server == Server::Valid ? 2 : -1),
        folder);
}

QSslConfiguration TestCertificates::serverConfiguration() const {
    QFile key(path(u"server.key"_s));
    if (!key.open(QIODevice::ReadOnly))
        throw std::runtime_error("no server key");
    QSslConfiguration configuration;
    configuration.setLocalCertificateChain(QSslCertificate::fromPath(path(u"server.pem"_s)));
    configuration.setPrivateKey(QSslKey(&key, QSsl::Ec));
    return configuration;
}

} // namespace lumora::tests
