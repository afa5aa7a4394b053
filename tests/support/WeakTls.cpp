#include "support/WeakTls.h"

#include <QFile>
#include <QSslSocket>
#include <QTemporaryFile>

namespace lumora::tests {

void allowWeakTls() {
    QTemporaryFile file;
    if (!file.open())
        qFatal("no temporary file");
    file.write("openssl_conf = all\n[all]\nssl_conf = ssl\n[ssl]\nsystem_default = weak\n"
               "[weak]\nMinProtocol = TLSv1\nCipherString = ALL:@SECLEVEL=0\n");
    file.flush();
    qputenv("OPENSSL_CONF", QFile::encodeName(file.fileName()));
    if (!QSslSocket::supportsSsl())
        qFatal("no TLS");
    qunsetenv("OPENSSL_CONF"); // which is not meant for the program that makes certificates
}

void speakOnly(QSslConfiguration& configuration, const QByteArray& version) {
    configuration.setProtocol(QSsl::AnyProtocol); // or else the toolkit has a minimum of its own
    for (const QByteArray bound : {"MinProtocol", "MaxProtocol"})
        configuration.setBackendConfigurationOption(bound, version);
}

} // namespace lumora::tests
