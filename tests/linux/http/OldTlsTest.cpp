#include "linux/http/HttpFetch.h"
#include "support/ScopedEnvironment.h"
#include "support/TestCertificates.h"
#include "support/WeakTls.h"

#include <QSslServer>

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

// In a process of its own, before anything else has loaded the TLS library.
TEST(OldTls, IsRefusedAlsoWhereTheSystemAllowsIt) {
    allowWeakTls();
    const TestCertificates certificates;
    const ScopedEnvironment trust("SSL_CERT_FILE", certificates.authorityFile().toUtf8());
    for (const QByteArray version : {"TLSv1", "TLSv1.1", "TLSv1.2", "TLSv1.3"}) {
        auto listener = std::make_unique<QSslServer>();
        QSslConfiguration configuration = certificates.serverConfiguration();
        speakOnly(configuration, version);
        listener->setSslConfiguration(configuration);
        ScriptedServer server(
            ScriptedServer::always(ScriptedServer::answer("200 OK", "in")), std::move(listener));
        const bool isNew = version > "TLSv1.1";
        EXPECT_EQ(
            summary(fetch(get(server.url(u"/"_s, u"https"_s)))),
            isNew ? "200 in" : "failed: SSL handshake failed: tlsv1 alert protocol version")
            << version.constData();
        EXPECT_EQ(server.requests().size(), isNew ? 1 : 0);
    }
}
