#include "e2e/ConfiguredProgram.h"
#include "fakes/FakePortal.h"
#include "support/Patience.h"
#include "support/ScriptedServer.h"

#include <QDBusMessage>
#include <QDir>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

#include <functional>

using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

const QJsonObject notConfigured{
    {u"mode"_s, u"error"_s},
    {u"state"_s, u"failed"_s},
    {u"message"_s, u"Not configured — open Settings"_s},
};
const QJsonObject loaded{{u"mode"_s, u"countdown"_s}, {u"state"_s, u"loaded"_s}};

class Configuration : public testing::Test {
protected:
    void writeEndpoint() { lumora.writePreferences({{u"endpointURL"_s, service.endpoint()}}); }

    ProgramHarness lumora;
    RealKeyring keyring{lumora.sessionBus()};
    ServiceProcess service;
};

} // namespace

TEST_F(Configuration, LoadsByItselfOnceTheTokenIsStored) {
    keyring.startUnlocked();
    writeEndpoint();
    lumora.start();
    ASSERT_TRUE(lumora.comesToShow(notConfigured));
    ASSERT_TRUE(storeToken(keyring, service.token()));
    EXPECT_TRUE(lumora.comesToShow(loaded));
}

TEST_F(Configuration, LoadsByItselfOnceTheKeyringStarts) {
    keyring.startUnlocked();
    ASSERT_TRUE(storeToken(keyring, service.token()));
    keyring.kill();
    writeEndpoint();
    lumora.start();
    ASSERT_TRUE(lumora.comesToShow(notConfigured));
    keyring.startUnlocked();
    EXPECT_TRUE(lumora.comesToShow(loaded));
}

TEST_F(Configuration, LoadsByItselfOnceTheKeyringIsUnlocked) {
    keyring.startUnlocked();
    ASSERT_TRUE(storeToken(keyring, service.token()));
    keyring.kill();
    keyring.startLocked();
    writeEndpoint();
    lumora.start();
    ASSERT_TRUE(lumora.comesToShow(notConfigured));
    keyring.unlock();
    EXPECT_TRUE(lumora.comesToShow(loaded));
}

TEST_F(Configuration, LoadsByItselfOnceTheNetworkIsThere) {
    keyring.startUnlocked();
    ASSERT_TRUE(storeToken(keyring, service.token()));
    writeEndpoint();
    service.stop();
    QDBusConnection networkManager = lumora.systemBus().connect();
    ASSERT_TRUE(networkManager.registerService(u"org.freedesktop.NetworkManager"_s));
    lumora.start();
    ASSERT_TRUE(lumora.comesToShow({{u"state"_s, u"failed"_s}}));

    service.restart();
    auto connected = QDBusMessage::createSignal(
        u"/org/freedesktop/NetworkManager"_s, u"org.freedesktop.NetworkManager"_s,
        u"StateChanged"_s);
    connected.setArguments({70U});
    ASSERT_TRUE(networkManager.send(connected));
    EXPECT_TRUE(lumora.comesToShow(loaded));
}

TEST_F(Configuration, LoadsByItselfOnceTheEndpointIsInTheFile) {
    keyring.startUnlocked();
    ASSERT_TRUE(storeToken(keyring, service.token()));
    lumora.start();
    ASSERT_TRUE(lumora.comesToShow(notConfigured));
    writeEndpoint();
    EXPECT_TRUE(lumora.comesToShow(loaded));
}

TEST_F(Configuration, ARefreshTakesTheEndpointFromTheFile) {
    keyring.startUnlocked();
    ASSERT_TRUE(storeToken(keyring, service.token()));
    lumora.start();
    ASSERT_TRUE(lumora.comesToShow(notConfigured));
    const auto before = lumora.run({u"refresh"_s});
    EXPECT_EQ(before.exitCode, 1);
    EXPECT_EQ(QString::fromUtf8(before.err), u"lumora: Not configured — open Settings\n"_s);

    writeEndpoint();
    const auto after = lumora.run({u"refresh"_s});
    EXPECT_EQ(after.exitCode, 0) << after.err.toStdString();
    EXPECT_TRUE(lumora.comesToShow(loaded));
}

TEST_F(Configuration, NothingInThePreferencesPlaceHoldsTheProgramUp) {
    QDir().mkpath(QFileInfo(lumora.preferencesPath()).path());
    const QByteArray path = QFile::encodeName(lumora.preferencesPath());
    const std::pair<std::function<bool()>, QByteArray> obstacles[] = {
        {[&] { return mkfifo(path.constData(), 0600) == 0; }, "Not a regular file"},
        {[&] { return symlink(path.constData(), path.constData()) == 0; },
         "Too many levels of symbolic links"},
        {[&] {
             QFile large(lumora.preferencesPath());
             return large.open(QFile::WriteOnly) && large.resize(100 * 1024 * 1024);
         },
         "File too large"},
    };
    for (const auto& [place, why] : obstacles) {
        ASSERT_TRUE(place());
        lumora.start();
        EXPECT_TRUE(lumora.comesToShow(notConfigured)) << why.toStdString();
        EXPECT_EQ(lumora.run({u"settings"_s}).exitCode, 0);
        EXPECT_EQ(lumora.run({u"quit"_s}).exitCode, 0);
        const QByteArray said = lumora.waitForEnd().err;
        EXPECT_EQ(
            said, "lumora: all preferences have their defaults: ~/config/lumora/lumora.conf: " +
                      why + '\n');
        ASSERT_TRUE(QFile::remove(lumora.preferencesPath()));
    }
}

TEST_F(Configuration, AProxyNeedsNoScheme) {
    keyring.startUnlocked();
    ASSERT_TRUE(storeToken(keyring, service.token()));
    lumora.writePreferences({{u"endpointURL"_s, u"https://service.invalid/api/briefing"_s}});
    for (const auto& name : {u"https_proxy"_s, u"HTTPS_PROXY"_s}) {
        const ScriptedServer proxy(
            ScriptedServer::always(ScriptedServer::answer("403 Forbidden", "")));
        lumora.setVariable(u"https_proxy"_s, {});
        lumora.setVariable(name, u"127.0.0.1:"_s + QString::number(proxy.port()));
        lumora.start();
        EXPECT_TRUE(QTest::qWaitFor([&] { return !proxy.requests().isEmpty(); }, patience))
            << name.toStdString();
        EXPECT_TRUE(proxy.requests().value(0).startsWith("CONNECT service.invalid:443 "));
        lumora.end();
    }
}

TEST_F(Configuration, ThePortalIsAskedOnceForAllWindows) {
    const FakePortal portal(lumora.sessionBus().connect(), {});
    keyring.startUnlocked();
    lumora.start();
    ASSERT_TRUE(lumora.comesToShow(notConfigured));
    EXPECT_EQ(lumora.run({u"show"_s}).exitCode, 0);
    EXPECT_EQ(lumora.run({u"settings"_s}).exitCode, 0);
    EXPECT_EQ(portal.reads, 5);
}
