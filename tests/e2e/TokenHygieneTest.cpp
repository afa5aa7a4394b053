#include "e2e/ConfiguredProgram.h"
#include "support/Fixtures.h"
#include "support/ScriptedServer.h"
#include "support/TestCertificates.h"

#include <QDBusMessage>
#include <QFile>
#include <QSslServer>

using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

const QByteArray token = "tell-this-to-nobody";

/// How often `text` stands in the memory that the process may write to.
qsizetype countInMemory(qint64 process, const QByteArray& text) {
    QFile map(u"/proc/%1/maps"_s.arg(process));
    QFile memory(u"/proc/%1/mem"_s.arg(process));
    EXPECT_TRUE(map.open(QFile::ReadOnly));
    EXPECT_TRUE(memory.open(QFile::ReadOnly | QFile::Unbuffered));
    qsizetype count = 0;
    const QByteArrayList regions = map.readAll().split('\n');
    for (const QByteArray& region : regions) {
        if (!region.contains(" rw"))
            continue;
        const QByteArrayList ends = region.left(region.indexOf(' ')).split('-');
        const qint64 start = ends[0].toLongLong(nullptr, 16);
        if (memory.seek(start))
            count += memory.read(ends[1].toLongLong(nullptr, 16) - start).count(text);
    }
    return count;
}

QByteArray asUtf16(const QByteArray& text) {
    const QString wide = QString::fromUtf8(text);
    return {reinterpret_cast<const char*>(wide.utf16()), wide.size() * 2};
}

/// A user with a token that the test looks for wherever it does not belong.
class TokenHygiene : public testing::Test {
protected:
    void SetUp() override {
        keyring.startUnlocked();
        ASSERT_TRUE(storeToken(keyring, token));
    }

    void useEndpoint(const QUrl& url) {
        lumora.writePreferences({{u"endpointURL"_s, url.toString()}});
    }

    /// Everything that other processes of the session can learn about the program.
    QByteArray whatOthersSee() {
        BusProbe probe(lumora.sessionBus().connect(), u"com.lumora.app"_s);
        const auto properties = probe.call(
            u"/StatusNotifierItem"_s, u"org.freedesktop.DBus.Properties"_s, u"GetAll"_s,
            {u"org.kde.StatusNotifierItem"_s});
        const auto menu = probe.call(
            u"/MenuBar"_s, u"com.canonical.dbusmenu"_s, u"GetLayout"_s,
            {0, -1, QStringList(u"label"_s)});
        EXPECT_EQ(properties.type(), QDBusMessage::ReplyMessage);
        EXPECT_EQ(menu.type(), QDBusMessage::ReplyMessage);
        const auto status = lumora.run({u"status"_s, u"--format"_s, u"json"_s});
        EXPECT_EQ(status.exitCode, 0);
        return written(properties) + written(menu) + status.out + status.err +
               lumora.preferencesFile();
    }

    /// Ends the program and gives what it has written.
    QByteArray whatItSaid() {
        EXPECT_EQ(lumora.run({u"quit"_s}).exitCode, 0);
        const auto ended = lumora.waitForEnd();
        EXPECT_EQ(ended.exitCode, 0);
        return ended.out + ended.err;
    }

    ProgramHarness lumora;
    RealKeyring keyring{lumora.sessionBus()};
};

} // namespace

TEST_F(TokenHygiene, TheTokenGoesToTheServiceAndNowhereElse) {
    QByteArray answer = ScriptedServer::answer("200 OK", fixture(u"briefing-full.json"_s));
    ScriptedServer server([&](QTcpSocket& connection, const QByteArray&) {
        connection.write(answer);
        connection.disconnectFromHost();
    });
    useEndpoint(server.url(u"/api/briefing"_s));
    lumora.start();
    ASSERT_TRUE(lumora.comesToShow({{u"state"_s, u"loaded"_s}}));
    ASSERT_EQ(header(server.requests().first(), "X-Api-Key"), token);
    EXPECT_FALSE(server.requests().first().split('\r').first().contains(token));
    EXPECT_FALSE(whatOthersSee().contains(token));

    for (const QByteArray& failure :
         {QByteArray("401 No"), QByteArray("403 No"), QByteArray("302 No")}) {
        answer = ScriptedServer::answer(failure, "not for " + token);
        const auto refreshed = lumora.run({u"refresh"_s});
        EXPECT_EQ(refreshed.exitCode, 1);
        EXPECT_FALSE(refreshed.err.contains(token)) << refreshed.err.toStdString();
        EXPECT_FALSE(whatOthersSee().contains(token));
    }
    EXPECT_EQ(whatItSaid(), "");
}

TEST_F(TokenHygiene, NothingOfItStaysInMemory) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer maps more than can be read, and keeps what is freed";
#endif
    const TestCertificates certificates;
    auto listener = std::make_unique<QSslServer>();
    listener->setSslConfiguration(certificates.serverConfiguration());
    ScriptedServer server(
        ScriptedServer::always(ScriptedServer::answer("200 OK", fixture(u"briefing-full.json"_s))),
        std::move(listener));
    lumora.setVariable(u"SSL_CERT_FILE"_s, certificates.authorityFile());
    useEndpoint(server.url(u"/api/briefing"_s, u"https"_s));
    lumora.start();
    ASSERT_TRUE(lumora.comesToShow({{u"state"_s, u"loaded"_s}}));
    for (int count = 0; count < 3; ++count)
        EXPECT_EQ(lumora.run({u"refresh"_s}).exitCode, 0);
    EXPECT_EQ(server.requests().size(), 4);
    const qint64 process = lumora.program().processId();
    EXPECT_GT(countInMemory(process, "lumora.app"), 0); // it looks at the right place
    EXPECT_EQ(countInMemory(process, token), 0);
    EXPECT_EQ(countInMemory(process, asUtf16(token)), 0);
}

TEST_F(TokenHygiene, ARedirectDoesNotCarryItToAnotherOrigin) {
    ScriptedServer stranger(ScriptedServer::always(
        ScriptedServer::answer("200 OK", fixture(u"briefing-minimal.json"_s))));
    ScriptedServer server(ScriptedServer::always(ScriptedServer::answer(
        "302 Found", {}, "Location: " + stranger.url(u"/api/briefing"_s).toEncoded() + "\r\n")));
    useEndpoint(server.url(u"/api/briefing"_s));
    lumora.start();
    EXPECT_TRUE(lumora.comesToShow({
        {u"mode"_s, u"error"_s},
        {u"message"_s, u"Server error (302)"_s},
    }));
    EXPECT_EQ(server.requests().size(), 1);
    EXPECT_EQ(stranger.connectionCount(), 0);
    EXPECT_EQ(whatItSaid(), "");
}

TEST_F(TokenHygiene, PlainHttpToAnotherMachineIsRefusedUnsent) {
    ScriptedServer proxy(ScriptedServer::always(
        ScriptedServer::answer("200 OK", fixture(u"briefing-minimal.json"_s))));
    lumora.setVariable(u"http_proxy"_s, proxy.url({}).toString());
    useEndpoint(QUrl(u"http://dashboard.example/api/briefing"_s));
    lumora.start();
    ASSERT_TRUE(lumora.comesToShow({{u"mode"_s, u"error"_s}, {u"state"_s, u"failed"_s}}));
    const QString message = lumora.status().value(u"message"_s).toString();
    EXPECT_TRUE(message.contains(u"https"_s, Qt::CaseInsensitive)) << message.toStdString();
    EXPECT_EQ(proxy.connectionCount(), 0);
    EXPECT_FALSE(whatOthersSee().contains(token));
    EXPECT_EQ(whatItSaid(), "");
}
