#include "linux/tray/StatusNotifierRegistration.h"

#include "support/FakeWatcher.h"
#include "support/Patience.h"
#include "support/PrivateBus.h"

#include <QTest>

#include <gtest/gtest.h>

#include <memory>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

using tests::patience;

namespace {

using State = StatusNotifierRegistration::State;

class StatusNotifierRegistrationTest : public testing::Test {
protected:
    std::unique_ptr<tests::FakeWatcher> watcher(bool hasHost = true) {
        return std::make_unique<tests::FakeWatcher>(m_bus.connect(), hasHost);
    }

    bool becomes(State state) {
        return QTest::qWaitFor([&] { return m_registration.state() == state; }, patience);
    }

    QStringList once() const { return {m_connection.baseService()}; }

    tests::PrivateBus m_bus;
    QDBusConnection m_connection = m_bus.connect();
    StatusNotifierRegistration m_registration{m_connection, std::chrono::milliseconds(1)};
};

TEST_F(StatusNotifierRegistrationTest, RegistersByUniqueNameWithAWatcherThatIsThere) {
    const auto present = watcher();
    EXPECT_EQ(m_registration.state(), State::Looking);
    m_registration.start();

    EXPECT_TRUE(becomes(State::Shown));
    EXPECT_EQ(present->registered(), once());
    EXPECT_TRUE(present->registered().value(0).startsWith(u':'));
}

TEST_F(StatusNotifierRegistrationTest, RegistersWhenAWatcherAppears) {
    m_registration.start();
    EXPECT_TRUE(becomes(State::NoWatcher));

    const auto late = watcher();
    EXPECT_TRUE(becomes(State::Shown));
    EXPECT_EQ(late->registered(), once());
}

TEST_F(StatusNotifierRegistrationTest, RegistersAgainWithARestartedWatcher) {
    auto first = watcher();
    m_registration.start();
    ASSERT_TRUE(becomes(State::Shown));

    first.reset();
    EXPECT_TRUE(becomes(State::NoWatcher));

    const auto second = watcher();
    EXPECT_TRUE(becomes(State::Shown));
    EXPECT_EQ(second->registered(), once());
}

TEST_F(StatusNotifierRegistrationTest, WaitsForAHost) {
    const auto hostless = watcher(false);
    m_registration.start();
    EXPECT_TRUE(becomes(State::NotShown));

    hostless->setHost(true);
    EXPECT_TRUE(becomes(State::Shown));
    hostless->setHost(false);
    EXPECT_TRUE(becomes(State::NotShown));
    EXPECT_EQ(hostless->registered(), once());
}

TEST_F(StatusNotifierRegistrationTest, TriesAgainWhenRefused) {
    const auto starting = watcher();
    starting->refuse(2);
    m_registration.start();

    EXPECT_TRUE(becomes(State::Shown));
    EXPECT_EQ(starting->refused(), 2);
    EXPECT_EQ(starting->registered(), once());
}

TEST_F(StatusNotifierRegistrationTest, GivesUpOnAWatcherThatNeverAgrees) {
    auto stubborn = watcher();
    stubborn->refuse(100);
    m_registration.start();
    ASSERT_TRUE(QTest::qWaitFor([&] { return stubborn->refused() == 5; }, patience));
    EXPECT_EQ(m_registration.state(), State::NotShown);

    // News of a host is a reason to ask once more, and another watcher is another chance.
    stubborn->setHost(true);
    ASSERT_TRUE(QTest::qWaitFor([&] { return stubborn->refused() == 6; }, patience));
    stubborn.reset();
    const auto friendly = watcher();
    EXPECT_TRUE(becomes(State::Shown));
}

TEST_F(StatusNotifierRegistrationTest, DoesWithoutABus) {
    StatusNotifierRegistration alone{QDBusConnection(u"no such connection"_s)};
    alone.start();
    EXPECT_EQ(alone.state(), State::NoWatcher);
}

TEST_F(StatusNotifierRegistrationTest, SurvivesTheEndOfTheBus) {
    const auto present = watcher();
    m_registration.start();
    ASSERT_TRUE(becomes(State::Shown));
    m_bus.kill();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !m_connection.isConnected(); }, patience));
}

} // namespace
} // namespace lumora
