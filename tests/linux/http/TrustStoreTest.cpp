#include "linux/http/TrustStore.h"

#include "linux/http/QtHttpTransport.h"
#include "support/Await.h"
#include "support/ScopedEnvironment.h"
#include "support/ScriptedServer.h"
#include "support/TestCertificates.h"

#include <QSslServer>

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

class TrustStore : public testing::Test {
protected:
    TrustStore() {
        auto listener = std::make_unique<QSslServer>();
        listener->setSslConfiguration(certificates.serverConfiguration());
        server = std::make_unique<ScriptedServer>(
            ScriptedServer::always(ScriptedServer::answer("200 OK", "secret")),
            std::move(listener));
    }

    HttpOutcome fetch() {
        QtHttpTransport transport;
        HttpRequest request{"GET", server->url(u"/"_s, u"https"_s), {{"X-Api-Key", "T"}}, {}};
        return awaitValue(transport.exchange(std::move(request)));
    }

    TestCertificates certificates;
    std::unique_ptr<ScriptedServer> server;
    ScopedEnvironment file{"SSL_CERT_FILE", std::nullopt};
    ScopedEnvironment folder{"SSL_CERT_DIR", std::nullopt};
};

} // namespace

TEST_F(TrustStore, AnUnknownAuthorityIsRefusedBeforeTheTokenIsSent) {
    const HttpOutcome outcome = fetch();
    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.error().kind, TransportError::Kind::Failed);
    EXPECT_TRUE(outcome.error().description.startsWith(u"SSL handshake failed"_s))
        << qPrintable(outcome.error().description);
    EXPECT_TRUE(server->requests().isEmpty());
}

TEST_F(TrustStore, TheEnvironmentsFileIsTrusted) {
    const ScopedEnvironment named("SSL_CERT_FILE", certificates.authorityFile().toUtf8());
    const HttpOutcome outcome = fetch();
    ASSERT_TRUE(outcome) << qPrintable(outcome.error().description);
    EXPECT_EQ(outcome->body, "secret");
}

TEST_F(TrustStore, TheEnvironmentsFoldersAreTrusted) {
    const ScopedEnvironment named(
        "SSL_CERT_DIR", "/nonexistent:" + certificates.authorityFolder().toUtf8());
    const HttpOutcome outcome = fetch();
    ASSERT_TRUE(outcome) << qPrintable(outcome.error().description);
}

TEST_F(TrustStore, ACertificateForAnotherNameIsRefused) {
    const ScopedEnvironment named("SSL_CERT_FILE", certificates.authorityFile().toUtf8());
    QUrl url = server->url(u"/"_s, u"https"_s);
    url.setHost(u"localhost"_s);
    QtHttpTransport transport;
    EXPECT_FALSE(awaitValue(transport.exchange({"GET", url, {}, {}})));
    EXPECT_TRUE(server->requests().isEmpty());
}

TEST_F(TrustStore, TheEnvironmentAddsToTheSystem) {
    const ScopedEnvironment named("SSL_CERT_FILE", certificates.authorityFile().toUtf8());
    const auto trust = environmentTrust();
    ASSERT_TRUE(trust);
    const auto trusted = trust->caCertificates();
    for (const QSslCertificate& certificate : QSslConfiguration::systemCaCertificates())
        EXPECT_TRUE(trusted.contains(certificate));
    EXPECT_TRUE(trusted.contains(QSslCertificate::fromPath(certificates.authorityFile()).first()));
}

TEST_F(TrustStore, NothingNamedOrReadableLeavesTheDefault) {
    EXPECT_FALSE(environmentTrust());
    const ScopedEnvironment missing("SSL_CERT_FILE", "/nonexistent/ca.pem");
    const ScopedEnvironment noFolder("SSL_CERT_DIR", "/nonexistent::");
    EXPECT_FALSE(environmentTrust());
}

TEST_F(TrustStore, TheSystemsOwnStoreIsNotReadAgain) {
    const ScopedEnvironment systemFile("SSL_CERT_FILE", "/etc/ssl/certs/ca-certificates.crt");
    const ScopedEnvironment systemFolder("SSL_CERT_DIR", "/etc/ssl/certs/");
    EXPECT_TRUE(environmentCertificates().isEmpty());
}
