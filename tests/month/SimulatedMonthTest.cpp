#include "app/StatusItemController.h"
#include "fakes/FakeClock.h"
#include "fakes/InvisibleCenter.h"
#include "month/FaultyService.h"
#include "platform/Background.h"
#include "platform/Spawn.h"
#include "platform/StatusItem.h"
#include "platform/WakeMonitor.h"
#include "platform/memory/MemoryPreferences.h"
#include "platform/memory/MemorySecretStore.h"
#include "reminders/NotificationService.h"
#include "service/KeychainService.h"
#include "service/LumoService.h"
#include "state/AppState.h"
#include "state/Ticker.h"

#include <QCoreApplication>

#include <gtest/gtest.h>
#include <malloc.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr int days = 30;

/// A keyring that is locked, or not there, when the month says so.
class MoodyStore final : public SecretStore {
public:
    SecretLookup lookup(const SecretKey& key) override {
        return trouble ? SecretLookup{*trouble, {}, {}} : m_store.lookup(key);
    }

    bool add(const SecretKey& key, const QString& label, const QByteArray& secret) override {
        return !trouble && m_store.add(key, label, secret);
    }

    SecretRemoval remove(const SecretKey& key) override { return m_store.remove(key); }

    std::optional<SecretLookup::Status> trouble;

private:
    MemorySecretStore m_store;
};

/// A status item that keeps nothing but what it shows.
class PlainItem final : public StatusItem {
public:
    void show(const StatusItemContent& content) override { shown = content; }

    QString unavailableReason() const override { return {}; }

    StatusItemContent shown;
};

/// What the program may say of a failure, in the panel or after an action.
bool isKnownMessage(const QString& message) {
    static const QStringList known{
        u"Not configured — open Settings"_s,
        u"Endpoint URL or token not set"_s,
        u"Invalid response from server"_s,
        u"Token rejected (401)"_s,
        u"Connection refused"_s,
        u"Host day.example not found"_s,
        u"Connection closed"_s,
        u"The request timed out"_s,
        u"SSL handshake failed: certificate has expired"_s,
        u"Server error (302)"_s,
        u"Server error (404)"_s,
        u"Server error (429)"_s,
        u"Server error (500)"_s,
        u"Server error (503)"_s,
        u"Not now"_s, // the service's own words, and
        QString(),    // those of one that has none
    };
    return known.contains(message);
}

/// The program without its windows, for a month of the clock that the test moves.
class SimulatedMonth : public testing::TestWithParam<unsigned> {
protected:
    SimulatedMonth() {
        EXPECT_TRUE(preferences.setValue(u"endpointURL"_s, u"https://day.example/api/briefing"_s));
        EXPECT_TRUE(preferences.setValue(u"refreshMinutes"_s, u"5"_s));
        EXPECT_TRUE(keychain.setToken(u"t0ken"_s));
        QObject::connect(&state, &AppState::changed, &state, [this] { look(); });
    }

    bool chance(int oneIn) { return std::uniform_int_distribution(1, oneIn)(random) == 1; }

    std::chrono::seconds between(std::chrono::seconds least, std::chrono::seconds most) {
        return std::chrono::seconds(
            std::uniform_int_distribution<qint64>(least.count(), most.count())(random));
    }

    void pass(std::chrono::seconds time) {
        // What is queued comes soon after what it was queued by.
        for (std::chrono::seconds left = time; left > 0s; left -= 10s) {
            clock.advance(std::min(left, std::chrono::seconds(10)));
            QCoreApplication::processEvents();
        }
    }

    void sleep(std::chrono::seconds time) {
        clock.suspend(time);
        Q_EMIT wake.woke();
        QCoreApplication::processEvents();
    }

    /// Something that a person does, or that happens to their computer.
    void happen() {
        switch (std::uniform_int_distribution(0, 9)(random)) {
        case 0:
            spawn(state.perform(LumoAction::habitToggle(u"h1"_s), u"habit:h1"_s));
            break;
        case 1:
            spawn(state.perform(LumoAction::choreDone(u"c1"_s), u"chore:c1"_s));
            break;
        case 2:
            spawn(state.capture(u"a thought"_s));
            break;
        case 3:
            spawn(state.refreshSpending());
            break;
        case 4:
            spawn(state.refresh());
            break;
        case 5:
            EXPECT_TRUE(preferences.setValue(
                u"notifyBeforeMeetings"_s, chance(2) ? u"true"_s : u"false"_s));
            break;
        case 6:
            if (chance(3))
                secrets.trouble = SecretLookup::Status::Locked;
            break;
        case 7:
            if (chance(3))
                secrets.trouble = SecretLookup::Status::Unavailable;
            break;
        default: // and is made good again
            secrets.trouble.reset();
            Q_EMIT secrets.readable();
            break;
        }
    }

    /// What has to hold at every change.
    void look() {
        for (const auto& message : {state.state().failureMessage(), state.actionError()})
            EXPECT_TRUE(!message || isKnownMessage(*message)) << message->toStdString();
        if (!state.lastGood()) {
            EXPECT_FALSE(lastCame);
            return;
        }
        const auto came = service.cameAs(state.lastGood()->generatedAt);
        ASSERT_TRUE(came) << "a briefing that nobody sent";
        EXPECT_GE(*came, lastCame.value_or(0)) << "an older briefing took a newer one's place";
        lastCame = came;
    }

    void expectOneReminderEach() const {
        for (const auto& [identifier, times] : center.shown)
            EXPECT_EQ(times.size(), 1U) << identifier.toStdString();
    }

    /// With nothing wrong any more, all that is under way comes to its end.
    void expectAllToSettle() {
        service.setWell(true);
        secrets.trouble.reset();
        Q_EMIT secrets.readable();
        pass(21min); // between two refreshes
        EXPECT_TRUE(state.pending().empty());
        EXPECT_TRUE(state.state().isLoaded())
            << state.state().failureMessage().value_or(u"?"_s).toStdString();
        EXPECT_NE(item.shown.title, QString());
        service.setWell(false);
    }

    void liveADay() {
        const Instant end = clock.now() + 24h;
        while (clock.now() < end - 10h) {
            pass(between(10s, 15min));
            if (chance(2))
                happen();
            if (chance(20))
                sleep(between(10s, 3h));
        }
        expectAllToSettle();
        if (clock.now() < end)
            sleep(std::chrono::duration_cast<std::chrono::seconds>(end - clock.now()));
    }

    std::mt19937 random{GetParam()};
    Background background;
    FakeClock clock;
    FaultyService service{clock, random};
    MemoryPreferences preferences;
    MoodyStore secrets;
    WakeMonitor wake;
    KeychainService keychain{secrets};
    LumoService client{service, keychain, clock, background};
    InvisibleCenter center{clock};
    NotificationService reminders{center, preferences, clock};
    AppState state{{
        .clock = clock,
        .preferences = preferences,
        .secrets = secrets,
        .keychain = keychain,
        .service = client,
        .reminders = reminders,
        .wake = wake,
    }};
    Ticker ticker{clock};
    PlainItem item;
    StatusItemController controller{state, ticker, preferences, item};
    std::optional<std::size_t> lastCame; ///< as which the briefing that is shown came
};

} // namespace

TEST_P(SimulatedMonth, LosesNothingAndKeepsNothing) {
    spawn(reminders.requestAuthorization());
    liveADay();
    [[maybe_unused]] const size_t afterOneDay = mallinfo2().uordblks;
    for (int day = 1; day < days; ++day)
        liveADay();
    expectOneReminderEach();
    EXPECT_GT(center.shown.size(), 40U);
    EXPECT_EQ(service.kindsSeen().size(), 22U);
    EXPECT_GT(service.exchangeCount(), 3000U);
#ifndef __SANITIZE_ADDRESS__ // which keeps what is freed, to see whether it is used again
    EXPECT_LT(mallinfo2().uordblks, afterOneDay + (size_t{1} << 20));
#endif
}

INSTANTIATE_TEST_SUITE_P(Seeds, SimulatedMonth, testing::Values(1U, 2U, 3U));
