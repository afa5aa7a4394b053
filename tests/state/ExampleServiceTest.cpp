// The example for authors of services, run as they run it, and fetched from and acted on as the
// program does.

#include "linux/http/CurlHttpTransport.h"
#include "support/Patience.h"
#include "support/StateHarness.h"

#include <QProcess>
#include <QTest>

#include <algorithm>

using namespace lumora;
using namespace lumora::tests;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

/// The interpreter with the example, ended with the test.
class ExampleProcess {
public:
    ExampleProcess() {
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(
            u"/usr/bin/python3"_s, {QStringLiteral(LUMORA_EXAMPLE_SERVICE), u"t0ken"_s, u"0"_s});
        EXPECT_TRUE(printed(u"http://"_s));
        m_endpoint = m_output.trimmed();
    }

    ~ExampleProcess() {
        m_process.kill();
        m_process.waitForFinished(patience);
    }

    const QString& endpoint() const { return m_endpoint; }

    bool printed(const QString& text) {
        return QTest::qWaitFor(
            [&] {
                m_output += QString::fromUtf8(m_process.readAllStandardOutput());
                return m_output.contains(text) && m_output.endsWith(u'\n');
            },
            patience);
    }

private:
    QProcess m_process;
    QString m_output;
    QString m_endpoint;
};

class ExampleService : public testing::Test {
protected:
    ExampleService() {
        preferences.set(u"endpointURL"_s, service.endpoint());
        EXPECT_TRUE(keychain.setToken(u"t0ken"_s));
        state.emplace(
            AppState::Dependencies{clock, preferences, secrets, keychain, client, reminders, wake});
    }

    /// Lets `task` run to its end, with every wait over at once.
    template <typename Result>
    Result done(QCoro::Task<Result> task) {
        EXPECT_TRUE(QTest::qWaitFor(
            [&] {
                clock.advance(1s);
                return task.isReady();
            },
            patience));
        if constexpr (!std::is_void_v<Result>)
            return task.operator co_await().await_resume();
    }

    const Briefing& briefing() { return *state->lastGood(); }

    ExampleProcess service;
    Background background;
    FakeClock clock;
    FakePreferences preferences;
    FakeSecretStore secrets;
    CurlHttpTransport transport;
    WakeMonitor wake;
    RecordingReminders reminders;
    KeychainService keychain{secrets};
    LumoService client{transport, keychain, clock, background};
    std::optional<AppState> state;
};

} // namespace

TEST_F(ExampleService, TakesAllFourActions) {
    done(state->refresh());
    ASSERT_TRUE(state->state().isLoaded()) << state->state().failureMessage()->toStdString();
    EXPECT_EQ(briefing().habits.done, 0);
    EXPECT_EQ(briefing().chores.count, 2);
    ASSERT_TRUE(briefing().spending);

    EXPECT_TRUE(done(state->perform(LumoAction::habitToggle(u"walk"_s), u"a"_s)));
    EXPECT_EQ(briefing().habits.done, 1);
    EXPECT_TRUE(done(state->perform(LumoAction::choreDone(u"plants"_s), u"b"_s)));
    EXPECT_EQ(briefing().chores.count, 1);
    EXPECT_EQ(briefing().chores.top.front().id, u"bins"_s);
    EXPECT_TRUE(done(state->capture(u"Buy \"good\" tea 🍵"_s)));
    EXPECT_TRUE(service.printed(u"Captured: Buy \"good\" tea 🍵"_s));
    const double before = briefing().spending->generatedAt;
    done(state->refreshSpending());
    EXPECT_GT(briefing().spending->generatedAt, before);
    EXPECT_EQ(state->actionError(), std::nullopt);
}

TEST_F(ExampleService, SaysWhyNot) {
    EXPECT_FALSE(done(state->perform(LumoAction::habitToggle(u"unheard of"_s), u"a"_s)));
    EXPECT_EQ(state->actionError(), u"This service cannot do that"_s);
    EXPECT_TRUE(keychain.setToken(u"other"_s));
    done(state->refresh());
    EXPECT_EQ(state->state().failureMessage(), u"Token rejected (401)"_s);
}
