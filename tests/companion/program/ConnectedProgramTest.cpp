#include "companion/program/ServiceHome.h"
#include "support/RealKeyring.h"

using namespace Qt::Literals::StringLiterals;
using namespace lumora::tests;

namespace {

const QString notConfigured = u"Not configured — open Settings"_s;

/// Both programs of one user. The service takes the client's surroundings over.
class ConnectedProgram : public testing::Test {
protected:
    ProgramHarness lumora;
    RealKeyring keyring{lumora.sessionBus()};
    ServiceHome home;

    void SetUp() override { home.environment() = lumora.makeProcess()->processEnvironment(); }

    ProgramHarness::Outcome init(const QStringList& more = {}) const {
        return home.run(
            QStringList{u"init"_s, u"--habit=Read"_s, u"--port=%1"_s.arg(home.port())} + more);
    }
};

} // namespace

TEST_F(ConnectedProgram, ShowsTheServiceByItself) {
    keyring.startUnlocked();
    lumora.start();
    ASSERT_TRUE(lumora.comesToShow({{u"message"_s, notConfigured}}));
    const auto told = init({u"--connect"_s});
    ASSERT_EQ(told.exitCode, 0) << told.err.constData();
    EXPECT_TRUE(told.out.contains("its token is in your keyring")) << told.out.constData();
    // It has fetched in vain by the time the service is there.
    ASSERT_TRUE(QTest::qWaitFor(
        [this] {
            const QJsonObject status = lumora.status();
            return status[u"state"_s] == u"failed"_s && status[u"message"_s] != notConfigured;
        },
        patience));
    home.serve();
    EXPECT_TRUE(lumora.comesToShow({{u"state"_s, u"loaded"_s}, {u"text"_s, u"0/1"_s}}));
}

TEST_F(ConnectedProgram, ReplacesATokenThatIsThere) {
    keyring.startUnlocked();
    ASSERT_TRUE(storeToken(keyring, "an old one"));
    const auto told = init({u"--connect"_s});
    ASSERT_EQ(told.exitCode, 0) << told.err.constData();
    const QByteArray token = told.out.split('\n').at(3).mid(9);
    ASSERT_TRUE(keyring.secretTool(
        {u"lookup"_s, u"service"_s, u"com.lumora.app"_s, u"account"_s, u"briefingToken"_s}));
    EXPECT_EQ(keyring.output().trimmed(), token);
}

TEST_F(ConnectedProgram, SaysWhenThereIsNoKeyring) {
    const auto told = init({u"--connect"_s});
    EXPECT_EQ(told.exitCode, 1);
    EXPECT_TRUE(told.err.startsWith("lumora-service: the token could not be put into a keyring: "))
        << told.err.constData();
    EXPECT_TRUE(told.out.contains("Token:   ")); // to paste
    keyring.startUnlocked();
    EXPECT_EQ(home.run({u"connect"_s}).exitCode, 0);
    EXPECT_TRUE(
        lumora.preferencesFile().contains("endpointURL=" + home.endpoint().toEncoded() + '\n'));
}
