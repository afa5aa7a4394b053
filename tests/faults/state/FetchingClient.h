#pragma once

#include "app/StatusItemController.h"
#include "fakes/FakeClock.h"
#include "fakes/FakeSecretStore.h"
#include "fakes/FakeStatusItem.h"
#include "fakes/RecordingReminders.h"
#include "faults/FaultRow.h"
#include "linux/http/CurlHttpTransport.h"
#include "platform/Background.h"
#include "platform/WakeMonitor.h"
#include "platform/memory/MemoryPreferences.h"
#include "service/KeychainService.h"
#include "service/LumoService.h"
#include "state/AppState.h"
#include "state/Ticker.h"

namespace lumora::tests {

/// A clock on which every wait is over as soon as everything else has had its turn.
class ImpatientClock final : public Clock {
public:
    Instant now() const override { return m_clock.now(); }

    std::unique_ptr<RepeatingTimer>
    every(std::chrono::seconds interval, std::function<void()> tick) override {
        return m_clock.every(interval, std::move(tick));
    }

    std::unique_ptr<Alarm> at(Instant time, std::function<void()> ring) override {
        return m_clock.at(time, std::move(ring));
    }

    QCoro::Task<> wait(std::chrono::milliseconds duration) override;

    /// The lengths of all waits, in order.
    const std::vector<std::chrono::milliseconds>& waits() const { return m_clock.waits(); }

private:
    FakeClock m_clock;
    QObject m_queue;
};

/// Counts the exchanges that are begun.
class CountingTransport final : public HttpTransport {
public:
    explicit CountingTransport(HttpTransport& transport)
        : m_transport(transport) {}

    QCoro::Task<HttpOutcome> exchange(HttpRequest request) override {
        ++count;
        return m_transport.exchange(std::move(request));
    }

    int count = 0;

private:
    HttpTransport& m_transport;
};

/// The program from the network up to what it says in the status area, without a desktop.
class FetchingClient {
public:
    explicit FetchingClient(HttpLimits limits);

    /// From now on briefings are fetched from here.
    void setEndpoint(const QString& endpoint);

    /// Fetches the briefing once, and returns when that has ended; throws when it does not.
    void fetch();

    /// What `lumora status` would tell.
    StatusReport status() const { return m_controller.report(); }

    /// How the latest fetch ended.
    FetchEnd end() const;

    /// The stamp of the briefing that is shown; absent without one.
    std::optional<double> briefing() const;

    /// The waits between tries, and how many exchanges were begun, since this was last asked.
    std::vector<std::chrono::milliseconds> takeWaits();
    int takeTries();

    /// Lets go of what the fakes keep of everything that went through them.
    void forget();

    AppState& state() { return m_state; }

private:
    Background m_background;
    ImpatientClock m_clock;
    CurlHttpTransport m_wire;
    CountingTransport m_transport{m_wire};
    MemoryPreferences m_preferences;
    FakeSecretStore m_secrets;
    WakeMonitor m_wake;
    RecordingReminders m_reminders;
    FakeStatusItem m_item;
    KeychainService m_keychain{m_secrets};
    LumoService m_service{m_transport, m_keychain, m_clock, m_background};
    AppState m_state;
    Ticker m_ticker{m_clock};
    StatusItemController m_controller{m_state, m_ticker, m_preferences, m_item};
    std::size_t m_waitsTaken = 0;
};

} // namespace lumora::tests
