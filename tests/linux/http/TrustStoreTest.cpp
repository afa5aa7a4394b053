#include "linux/http/TrustStore.h"

#include "linux/http/CurlHttpTransport.h"
#include "support/Await.h"
#include "support/ScopedEnvironment.h"
#include "support/ScriptedServer.h"
#include "support/TestCertificates.h"

#include <QSslServer>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>

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
        CurlHttpTransport transport;
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
    EXPECT_EQ(
        outcome.error().description,
        u"SSL handshake failed: unable to get local issuer certificate"_s);
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
    CurlHttpTransport transport;
    EXPECT_FALSE(awaitValue(transport.exchange({"GET", url, {}, {}})));
    EXPECT_TRUE(server->requests().isEmpty());
}

TEST_F(TrustStore, OnlyCertificatesAreTakenFromWhatIsNamed) {
    QTemporaryDir mixed;
    QFile::copy(certificates.authorityFile(), mixed.filePath(u"ca.pem"_s));
    QFile note(mixed.filePath(u"README"_s));
    ASSERT_TRUE(note.open(QIODevice::WriteOnly));
    note.write("-----BEGIN CERTIFICATE-----\nno end\n");
    note.close();
    const ScopedEnvironment named("SSL_CERT_DIR", mixed.path().toUtf8());
    EXPECT_EQ(environmentCertificates().count("-----BEGIN"), 1);
    EXPECT_TRUE(fetch());
}

TEST_F(TrustStore, NothingNamedOrReadableAddsNothing) {
    EXPECT_TRUE(environmentCertificates().isEmpty());
    const ScopedEnvironment missing("SSL_CERT_FILE", "/nonexistent/ca.pem");
    const ScopedEnvironment noFolder("SSL_CERT_DIR", "/nonexistent::");
    EXPECT_TRUE(environmentCertificates().isEmpty());
}

TEST_F(TrustStore, APipeIsNotReadFrom) {
    QTemporaryDir home;
    const QByteArray pipe = home.filePath(u"pipe"_s).toUtf8();
    ASSERT_EQ(mkfifo(pipe.constData(), 0600), 0);
    const ScopedEnvironment named("SSL_CERT_FILE", pipe);
    EXPECT_TRUE(environmentCertificates().isEmpty());
}

TEST_F(TrustStore, TheSystemsOwnStoreIsNotReadAgain) {
    const ScopedEnvironment systemFile("SSL_CERT_FILE", "/etc/ssl/certs/ca-certificates.crt");
    const ScopedEnvironment systemFolder("SSL_CERT_DIR", "/etc/ssl/certs/");
    EXPECT_TRUE(environmentCertificates().isEmpty());
}
