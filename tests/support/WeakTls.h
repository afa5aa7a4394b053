#pragma once

#include <QSslConfiguration>

namespace lumora::tests {

/// Lets the TLS library speak in this process what it usually refuses to: versions before 1.2, weak
/// keys and digests. To be called before anything else of TLS, for it reads this once, when it is
/// loaded.
void allowWeakTls();

/// Has a server speak one version of TLS alone, as OpenSSL names it: "TLSv1.1".
void speakOnly(QSslConfiguration& configuration, const QByteArray& version);

} // namespace lumora::tests
