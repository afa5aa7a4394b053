#pragma once

#include "service/LumoAction.h"
#include "support/Await.h"
#include "support/StateHarness.h"

#include <gtest/gtest.h>

#include <set>

namespace lumora::tests {

using namespace Qt::Literals::StringLiterals;

using Keys = std::set<QString>;

inline const QString habitKey = u"habit:read"_s;

/// A state with a briefing in place (request 0), so that actions begin at request 1.
class AppStateActionsTest : public testing::Test, protected StateHarness {
protected:
    AppStateActionsTest() {
        start();
        answer(0, 1);
    }

    QCoro::Task<bool> toggle(const QString& id) {
        return state->perform(LumoAction::habitToggle(id), u"habit:"_s + id);
    }

    /// Ends the exchange of the action at `index`.
    void reply(std::size_t index, int status, const QByteArray& body = {}) {
        transport.complete(index, FakeHttpTransport::answer(status, body));
    }

    /// Leaves the message "E" of a failed action behind.
    void failAnAction() {
        const std::size_t index = transport.requests().size();
        toggle(u"failing"_s);
        reply(index, 409, R"({"error": "E"})");
        ASSERT_EQ(state->actionError(), u"E"_s);
    }

    std::size_t requestCount() const { return transport.requests().size(); }

    QByteArray method(std::size_t index) const { return transport.requests().at(index).method; }
};

} // namespace lumora::tests
