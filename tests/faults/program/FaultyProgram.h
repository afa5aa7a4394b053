#pragma once

#include "faults/FaultService.h"
#include "faults/FaultTable.h"
#include "support/ProgramHarness.h"
#include "support/RealKeyring.h"

#include <gtest/gtest.h>

namespace lumora::tests {

/// A user whose service is well until the test says otherwise.
class FaultyProgram : public testing::Test {
protected:
    void SetUp() override {
        keyring.startUnlocked();
        ASSERT_TRUE(storeToken(keyring, "a token"));
        inventNames();
    }

    /// Has the row's service stand by, and names its proxy and its authority to the program.
    void standBy(const FaultRow& row) {
        way = service.begin(row);
        lumora.setVariable(QStringLiteral("https_proxy"), QString::fromUtf8(way.proxy));
        lumora.setVariable(QStringLiteral("SSL_CERT_FILE"), QString::fromUtf8(way.authority));
    }

    /// Has the program fetch from elsewhere, as the settings would.
    void goTo(const QString& endpoint) {
        lumora.writePreferences({{QStringLiteral("endpointURL"), endpoint}});
    }

    ProgramHarness lumora;
    RealKeyring keyring{lumora.sessionBus()};
    FaultService service;
    FaultService::Way way;

private:
    /// Looks names up as the tests in one process do.
    void inventNames() {
        lumora.setVariable(QStringLiteral("LD_PRELOAD"), QStringLiteral(LUMORA_INVENTED_NAMES));
        // The sanitizers want to be the first library themselves, where they are linked.
        const QString options = qEnvironmentVariable("ASAN_OPTIONS");
        lumora.setVariable(
            QStringLiteral("ASAN_OPTIONS"), options + QStringLiteral(":verify_asan_link_order=0"));
    }
};

} // namespace lumora::tests
