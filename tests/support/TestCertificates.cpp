#include "support/TestCertificates.h"

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
    if (!process.waitForFinished() || process.exitCode() != 0)
        throw std::runtime_error(process.readAllStandardError().toStdString());
}

void writeFile(const QString& path, const QByteArray& text) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        throw std::runtime_error("no temporary file");
}

} // namespace

TestCertificates::TestCertificates(Server server) {
    const QString folder = m_folder.path();
    QDir(folder).mkdir(u"authority"_s);
    writeFile(path(u"server.ext"_s), "subjectAltName=IP:127.0.0.1\n");
    writeFile(
        path(u"ca.conf"_s),
        "[ca]\ndefault_ca=test\n"
        "[test]\ndatabase=issued\nnew_certs_dir=.\npolicy=any\nrand_serial=yes\n"
        "[any]\ncommonName=supplied\n");
    writeFile(path(u"issued"_s), "");

    const QString key = u"-newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes"_s;
    openssl(
        u"req -x509 -days 2 -subj /CN=Test-Authority -keyout ca.key -out authority/ca.pem "_s + key,
        folder);
    openssl(u"req -subj /CN=127.0.0.1 -keyout server.key -out server.csr "_s + key, folder);
    const QString dates = server == Server::Valid
                              ? u"-days 2"_s
                              : u"-startdate 20200101000000Z -enddate 20200102000000Z"_s;
    openssl(
        u"ca -batch -config ca.conf -cert authority/ca.pem -keyfile ca.key -md sha256 "
        "-notext -extfile server.ext -in server.csr -out server.pem "_s +
            dates,
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
