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

void writeFile(const QString& path, const QByteArray& text) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        throw std::runtime_error("no temporary file");
}

using Server = TestCertificates::Server;

/// The options of a new key.
QString newKey(Server server) {
    return server == Server::WeakKey ? u" -newkey rsa:1024 -nodes"_s
                                     : u" -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes"_s;
}

/// The options for how long the certificate is valid.
QString dates(Server server) {
    switch (server) {
    case Server::Expired:
        return u" -startdate 20200101000000Z -enddate 20200102000000Z"_s;
    case Server::NotYetValid:
        return u" -startdate 20700101000000Z -enddate 20800101000000Z"_s;
    default:
        return u" -days 2"_s;
    }
}

} // namespace

TestCertificates::TestCertificates(Server server) {
    const QString folder = m_folder.path();
    QDir(folder).mkdir(u"authority"_s);
    const QByteArray name = server == Server::OtherHost ? "DNS:service.invalid" : "IP:127.0.0.1";
    writeFile(path(u"server.ext"_s), "subjectAltName=" + name + '\n');
    writeFile(
        path(u"ca.conf"_s),
        "[ca]\ndefault_ca=test\n"
        "[test]\ndatabase=issued\nnew_certs_dir=.\npolicy=any\nrand_serial=yes\n"
        "[any]\ncommonName=supplied\n");
    writeFile(path(u"issued"_s), "");

    openssl(
        u"req -x509 -days 2 -subj /CN=Test-Authority -keyout ca.key -out authority/ca.pem"_s +
            newKey(Server::Valid),
        folder);
    if (server == Server::SelfSigned) {
        openssl(
            u"req -x509 -days 2 -subj /CN=127.0.0.1 -keyout server.key -out server.pem"_s +
                u" -addext subjectAltName=IP:127.0.0.1"_s + newKey(server),
            folder);
        return;
    }
    openssl(
        u"req -subj /CN=127.0.0.1 -keyout server.key -out server.csr"_s + newKey(server), folder);
    const QString digest = server == Server::WeakDigest ? u" -md sha1"_s : u" -md sha256"_s;
    openssl(
        u"ca -batch -config ca.conf -cert authority/ca.pem -keyfile ca.key "
        "-notext -extfile server.ext -in server.csr -out server.pem"_s +
            digest + dates(server),
        folder);
}

QSslConfiguration TestCertificates::serverConfiguration() const {
    QFile key(path(u"server.key"_s));
    if (!key.open(QIODevice::ReadOnly))
        throw std::runtime_error("no server key");
    const QSslCertificate certificate = QSslCertificate::fromPath(path(u"server.pem"_s)).value(0);
    QSslConfiguration configuration;
    configuration.setLocalCertificate(certificate);
    configuration.setPrivateKey(QSslKey(&key, certificate.publicKey().algorithm()));
    return configuration;
}

} // namespace lumora::tests
