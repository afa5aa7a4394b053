#include "e2e/ConfiguredProgram.h"

#include <QDBusMessage>

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
