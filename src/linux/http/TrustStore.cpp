#include "linux/http/TrustStore.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

constexpr qint64 largestFile = qint64{16} * 1024 * 1024;

// Many environments name the system's own store. It counts anyway, and reading hundreds of
// certificates takes long enough to be felt.
bool isSystemStore(const QString& path) {
    const QString canonical = QFileInfo(path).canonicalFilePath();
    return canonical == QLatin1StringView(systemCertificates) ||
           canonical == u"/etc/ssl/certs/ca-certificates.crt"_s;
}

// A pipe or a device would block, or never end.
QByteArray readRegularFile(const QString& path) {
    const QFileInfo info(path);
    QFile file(path);
    if (!info.isFile() || info.size() > largestFile || !file.open(QIODevice::ReadOnly))
        return {};
    return file.read(largestFile);
}

// The certificates alone: a key or a note beside them would be refused with everything else.
QByteArray certificatesIn(const QByteArray& pem) {
    static const QByteArray begin = "-----BEGIN CERTIFICATE-----";
    static const QByteArray end = "-----END CERTIFICATE-----";
    QByteArray certificates;
    for (qsizetype from = 0; (from = pem.indexOf(begin, from)) >= 0;) {
        const qsizetype to = pem.indexOf(end, from);
        if (to < 0)
            break;
        certificates += pem.mid(from, to + end.size() - from) + '\n';
        from = to + end.size();
    }
    return certificates;
}

} // namespace

QByteArray environmentCertificates() {
    QByteArray certificates;
    const QString file = qEnvironmentVariable("SSL_CERT_FILE");
    if (!file.isEmpty() && !isSystemStore(file))
        certificates += certificatesIn(readRegularFile(file));
    const QStringList folders =
        qEnvironmentVariable("SSL_CERT_DIR").split(u':', Qt::SkipEmptyParts);
    for (const QString& folder : folders) {
        if (isSystemStore(folder))
            continue;
        const QFileInfoList files = QDir(folder).entryInfoList(QDir::Files);
        for (const QFileInfo& entry : files)
            certificates += certificatesIn(readRegularFile(entry.filePath()));
    }
    return certificates;
}

} // namespace lumora
