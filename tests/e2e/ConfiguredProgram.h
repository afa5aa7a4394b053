#pragma once

#include "e2e/ServiceProcess.h"
#include "support/ProgramHarness.h"
#include "support/RealKeyring.h"

#include <gtest/gtest.h>

namespace lumora::tests {

/// A user who has set everything up: a service that runs, its address in the preferences, and its
/// token in a real keyring.
class ConfiguredProgram : public testing::Test {
protected:
    void SetUp() override {
        keyring.startUnlocked();
        ASSERT_TRUE(storeToken(keyring, service.token()));
        prefer(QStringLiteral("habits"));
    }

    /// Writes the preferences with this choice for the label without a meeting.
    void prefer(const QString& menuBarAmbient) {
        lumora.writePreferences(
            {{QStringLiteral("endpointURL"), service.endpoint()},
             {QStringLiteral("menuBarAmbient"), menuBarAmbient},
             {QStringLiteral("toldOfNoStatusArea"), QStringLiteral("true")}});
    }

    /// Moves the service's day so far back that no meeting is near.
    void leaveMeetingsBehind() {
        service.control({{QStringLiteral("shiftDaySeconds"), -5 * 60 * 60}});
    }

    ProgramHarness lumora;
    RealKeyring keyring{lumora.sessionBus()};
    ServiceProcess service;
};

} // namespace lumora::tests
