#pragma once

#include "fakes/FakeClock.h"
#include "fakes/FakeHttpTransport.h"
#include "fakes/FakePreferences.h"
#include "fakes/FakeSecretStore.h"
#include "fakes/RecordingReminders.h"
#include "platform/Background.h"
#include "platform/Spawn.h"
#include "platform/WakeMonitor.h"
#include "service/KeychainService.h"
#include "service/LumoService.h"
#include "state/AppState.h"
#include "support/Fixtures.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <vector>

namespace lumora::tests {

/// An application state over fakes: configured unless the test takes that away first.
class StateHarness {
public:
    StateHarness() {
        preferences.set(
            QStringLiteral("endpointURL"), QStringLiteral("https://day.example/api/briefing"));
        EXPECT_TRUE(keychain.setToken(QStringLiteral("t0ken")));
    }

    /// Makes the state and lets its first refresh begin.
    AppState& start() {
        state.emplace(AppState::Dependencies{
            .clock = clock,
            .preferences = preferences,
            .secrets = secrets,
            .keychain = keychain,
            .service = service,
            .reminders = reminders,
            .wake = wake,
        });
        settle();
        return *state;
    }

    /// Collects what `look` sees at every change from now on, as views see it.
    template <typename Look>
    auto watch(Look look) {
        auto seen = std::make_shared<std::vector<std::invoke_result_t<Look>>>();
        QObject::connect(
            &*state, &AppState::changed, &*state, [seen, look] { seen->push_back(look()); });
        return seen;
    }

    /// Lets queued work happen.
    static void settle() { QCoreApplication::processEvents(); }

    /// Ends the exchange of the request at `index` with a good briefing.
    void answer(std::size_t index, double generatedAt) {
        transport.complete(index, FakeHttpTransport::answer(200, briefingBody(generatedAt)));
    }

    Background background;
    FakeClock clock;
    FakePreferences preferences;
    FakeSecretStore secrets;
    FakeHttpTransport transport;
    WakeMonitor wake;
    RecordingReminders reminders;
    KeychainService keychain{secrets};
    LumoService service{transport, keychain, clock, background};
    std::optional<AppState> state;
};

} // namespace lumora::tests
