#include "service/LumoService.h"

#include "fakes/FakeClock.h"
#include "fakes/FakeHttpTransport.h"
#include "fakes/FakeSecretStore.h"
#include "platform/Background.h"
#include "service/KeychainService.h"
#include "support/Await.h"
#include "support/Fixtures.h"

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

using Fetched = tl::expected<Briefing, LumoError>;
using FetchTask = QCoro::Task<Fetched>;
using Headers = QList<QPair<QByteArray, QByteArray>>;
using Waits = std::vector<std::chrono::milliseconds>;

const QString briefingEndpoint = u"https://example.com/api/briefing"_s;

class LumoServiceTest : public testing::Test {
protected:
    LumoServiceTest() { setToken("T"); }

    void setToken(const QByteArray& token) {
        store.put({u"com.lumora.app"_s, u"briefingToken"_s}, token);
    }

    /// The outcome of a fetch whose exchanges were all prepared, however long it has to wait.
    Fetched fetch(const QString& from = briefingEndpoint) {
        auto task = service->fetchBriefing(from);
        clock.advance(1h);
        return awaitValue(std::move(task));
    }

    void prepare(int status, const QByteArray& body = {}) {
        transport.prepare(FakeHttpTransport::answer(status, body));
    }

    void prepareBriefing() { prepare(200, fixture(u"briefing-minimal.json"_s)); }

    Background background;
    FakeClock clock;
    FakeHttpTransport transport;
    FakeSecretStore store;
    KeychainService keychain{store};
    std::unique_ptr<LumoService> service =
        std::make_unique<LumoService>(transport, keychain, clock, background);
};

/// `json` with so much behind it that reading it takes a while.
QByteArray large(QByteArray json) {
    return json + QByteArray(1 << 20, ' ');
}

Fetched fetchFailedWith(LumoError error) {
    return tl::unexpected(std::move(error));
}

} // namespace

TEST_F(LumoServiceTest, FetchesTheBriefing) {
    prepareBriefing();
    const auto briefing = fetch();
    ASSERT_TRUE(briefing) << qPrintable(briefing.error().errorDescription());
    EXPECT_EQ(briefing->date, u"2025-03-04"_s);
    EXPECT_TRUE(clock.waits().empty());
}

TEST_F(LumoServiceTest, SendsAnAuthenticatedGet) {
    prepareBriefing();
    setToken("t\xc3\xb6ken");
    fetch();
    ASSERT_EQ(transport.requests().size(), 1U);
    const HttpRequest& request = transport.requests().front();
    EXPECT_EQ(request.method, "GET");
    EXPECT_EQ(request.url, QUrl(briefingEndpoint));
    EXPECT_EQ(
        request.headers, (Headers{{"X-Api-Key", "t\xc3\xb6ken"}, {"Accept", "application/json"}}));
    EXPECT_FALSE(request.body);
}

TEST_F(LumoServiceTest, TrimsTheEndpointAndChangesNothingElse) {
    prepareBriefing();
    fetch(u" \n https://example.com/api/briefing/?user=1 \t"_s);
    ASSERT_EQ(transport.requests().size(), 1U);
    EXPECT_EQ(transport.requests()[0].url, QUrl(u"https://example.com/api/briefing/?user=1"_s));
}

TEST_F(LumoServiceTest, ABlankEndpointIsInvalidWithoutAnyRequest) {
    for (const QString& text : {u""_s, u"   "_s, u"https://exa mple.com/"_s}) {
        EXPECT_EQ(fetch(text), fetchFailedWith(LumoError::invalidURL()));
    }
    EXPECT_TRUE(transport.requests().empty());
    EXPECT_TRUE(clock.waits().empty());
}

TEST_F(LumoServiceTest, AMissingTokenComesFirst) {
    setToken("");
    EXPECT_EQ(fetch(u"   "_s), fetchFailedWith(LumoError::notConfigured()));
    EXPECT_EQ(fetch(u"http://example.com/"_s), fetchFailedWith(LumoError::notConfigured()));
    EXPECT_TRUE(transport.requests().empty());
}

TEST_F(LumoServiceTest, WhoNeedsALockedTokenHasTheUserAskedForIt) {
    store.setLookupTrouble(SecretLookup::Status::Locked);
    EXPECT_EQ(fetch(u"https://example.com/"_s), fetchFailedWith(LumoError::notConfigured()));
    EXPECT_EQ(store.unlockRequests(), 1);
}

TEST_F(LumoServiceTest, TheTokenIsNotSentInTheClear) {
    const auto outcome = fetch(u"http://example.com/api/briefing"_s);
    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.error().kind(), LumoError::Kind::NetworkError);
    EXPECT_TRUE(outcome.error().errorDescription().contains(u"https://"_s));
    EXPECT_TRUE(transport.requests().empty());
    EXPECT_TRUE(clock.waits().empty());
}

TEST_F(LumoServiceTest, TheTokenMayBeSentToThisComputerInTheClear) {
    prepareBriefing();
    EXPECT_TRUE(fetch(u"http://127.0.0.1:8080/api/briefing"_s));
}

TEST_F(LumoServiceTest, ASuccessWithoutABriefingIsInvalid) {
    for (const QByteArray body :
         {"", "null", "[]", "{}", "<html></html>", "{\"date\": \"2025-03-04\"}"}) {
        prepare(200, body);
        EXPECT_EQ(fetch(), fetchFailedWith(LumoError::invalidResponse())) << body.constData();
    }
    prepare(204);
    EXPECT_EQ(fetch(), fetchFailedWith(LumoError::invalidResponse()));
    EXPECT_EQ(transport.requests().size(), 7U);
    EXPECT_TRUE(clock.waits().empty());
}

TEST_F(LumoServiceTest, AFailingServerIsAskedThreeTimes) {
    for (int i = 0; i < 4; ++i)
        prepare(503);
    EXPECT_EQ(fetch(), fetchFailedWith(LumoError::serverError(503)));
    EXPECT_EQ(transport.requests().size(), 3U);
    EXPECT_EQ(clock.waits(), (Waits{500ms, 1000ms}));
}

TEST_F(LumoServiceTest, ABusyServerIsAskedAgain) {
    prepare(429);
    prepare(429);
    prepareBriefing();
    EXPECT_TRUE(fetch());
    EXPECT_EQ(transport.requests().size(), 3U);
}

TEST_F(LumoServiceTest, ABrokenExchangeIsTriedAgain) {
    transport.prepare(FakeHttpTransport::failure(u"Connection refused"_s));
    prepareBriefing();
    EXPECT_TRUE(fetch());
    EXPECT_EQ(clock.waits(), (Waits{500ms}));
}

TEST_F(LumoServiceTest, TheLastErrorIsTheOneReported) {
    prepare(503);
    transport.prepare(FakeHttpTransport::failure(u"Connection refused"_s));
    prepare(429);
    EXPECT_EQ(fetch(), fetchFailedWith(LumoError::serverError(429)));
}

TEST_F(LumoServiceTest, AnErrorThatWillNotPassEndsTheRetries) {
    prepare(503);
    prepare(404, "<html></html>");
    EXPECT_EQ(fetch(), fetchFailedWith(LumoError::serverError(404)));
    EXPECT_EQ(transport.requests().size(), 2U);
}

TEST_F(LumoServiceTest, WhatWillNotPassIsNotTriedAgain) {
    const std::pair<HttpOutcome, LumoError> rows[] = {
        {FakeHttpTransport::answer(401, R"({"error": "E"})"), LumoError::unauthorized()},
        {FakeHttpTransport::answer(404, R"({"error": "T"})"), LumoError::actionRejected(u"T"_s)},
        {FakeHttpTransport::answer(404, "<html></html>"), LumoError::serverError(404)},
        {FakeHttpTransport::answer(302), LumoError::serverError(302)},
        {tl::unexpected(TransportError{TransportError::Kind::Refused, u"No header"_s}),
         LumoError::refused(u"No header"_s)},
        {tl::unexpected(TransportError{TransportError::Kind::BodyTooLarge, u"Big"_s}),
         LumoError::invalidResponse()},
        {tl::unexpected(TransportError{TransportError::Kind::NotHttp, u"Odd"_s}),
         LumoError::invalidResponse()},
    };
    for (const auto& [outcome, error] : rows) {
        const std::size_t before = transport.requests().size();
        transport.prepare(outcome);
        EXPECT_EQ(fetch(), fetchFailedWith(error));
        EXPECT_EQ(transport.requests().size(), before + 1);
    }
    EXPECT_TRUE(clock.waits().empty());
}

TEST_F(LumoServiceTest, WaitsHalfASecondThenASecond) {
    for (int i = 0; i < 3; ++i)
        prepare(503);
    const FetchTask task = service->fetchBriefing(briefingEndpoint);
    EXPECT_EQ(transport.requests().size(), 1U);
    clock.advance(499ms);
    EXPECT_EQ(transport.requests().size(), 1U);
    clock.advance(1ms);
    EXPECT_EQ(transport.requests().size(), 2U);
    clock.advance(999ms);
    EXPECT_EQ(transport.requests().size(), 2U);
    EXPECT_FALSE(task.isReady());
    clock.advance(1ms);
    EXPECT_EQ(transport.requests().size(), 3U);
    EXPECT_TRUE(task.isReady());
}

TEST_F(LumoServiceTest, TheTokenIsReadForEveryTry) {
    prepare(503);
    prepare(503);
    auto task = service->fetchBriefing(briefingEndpoint);
    setToken("U");
    clock.advance(500ms);
    ASSERT_EQ(transport.requests().size(), 2U);
    EXPECT_EQ(transport.requests()[0].headers[0].second, "T");
    EXPECT_EQ(transport.requests()[1].headers[0].second, "U");
    store.setLookupTrouble(SecretLookup::Status::Locked);
    clock.advance(1s);
    EXPECT_EQ(awaitValue(std::move(task)), fetchFailedWith(LumoError::notConfigured()));
    EXPECT_EQ(transport.requests().size(), 2U);
}

TEST_F(LumoServiceTest, CallsOverlap) {
    auto first = service->fetchBriefing(briefingEndpoint);
    auto second = service->fetchBriefing(briefingEndpoint);
    EXPECT_EQ(transport.pendingCount(), 2U);
    transport.complete(1, FakeHttpTransport::answer(401));
    EXPECT_EQ(awaitValue(std::move(second)), fetchFailedWith(LumoError::unauthorized()));
    EXPECT_FALSE(first.isReady());
    transport.complete(0, FakeHttpTransport::answer(200, fixture(u"briefing-minimal.json"_s)));
    EXPECT_TRUE(awaitValue(std::move(first)));
}

TEST_F(LumoServiceTest, DestroyedDuringAnExchangeItMakesNoFurtherRequest) {
    auto task = service->fetchBriefing(briefingEndpoint);
    service.reset();
    transport.complete(0, FakeHttpTransport::answer(503));
    EXPECT_EQ(awaitValue(std::move(task)), fetchFailedWith(LumoError::serverError(503)));
    EXPECT_TRUE(clock.waits().empty());
    EXPECT_EQ(transport.requests().size(), 1U);
}

TEST_F(LumoServiceTest, DestroyedDuringAnExchangeItStillHandsOverABriefing) {
    auto task = service->fetchBriefing(briefingEndpoint);
    service.reset();
    transport.complete(0, FakeHttpTransport::answer(200, fixture(u"briefing-minimal.json"_s)));
    EXPECT_TRUE(awaitValue(std::move(task)));
}

TEST_F(LumoServiceTest, DestroyedDuringAWaitItMakesNoFurtherRequest) {
    prepare(503);
    auto task = service->fetchBriefing(briefingEndpoint);
    service.reset();
    clock.advance(1h);
    EXPECT_EQ(awaitValue(std::move(task)), fetchFailedWith(LumoError::serverError(503)));
    EXPECT_EQ(transport.requests().size(), 1U);
}

TEST_F(LumoServiceTest, ALargeAnswerIsReadWhileTheEventLoopRuns) {
    prepare(200, large(fixture(u"briefing-minimal.json"_s)));
    auto task = service->fetchBriefing(briefingEndpoint);
    EXPECT_FALSE(task.isReady());
    const auto briefing = awaitValue(std::move(task));
    ASSERT_TRUE(briefing) << qPrintable(briefing.error().errorDescription());
    EXPECT_EQ(briefing->date, u"2025-03-04"_s);
}

TEST_F(LumoServiceTest, ALargeRefusalIsReadWhileTheEventLoopRuns) {
    prepare(403, large(R"({"error": "Not today"})"));
    auto task = service->fetchBriefing(briefingEndpoint);
    EXPECT_FALSE(task.isReady());
    EXPECT_EQ(
        awaitValue(std::move(task)), fetchFailedWith(LumoError::actionRejected(u"Not today"_s)));
}

TEST_F(LumoServiceTest, ALargeAnswerIsReadWithoutTheService) {
    prepare(200, large(fixture(u"briefing-minimal.json"_s)));
    auto task = service->fetchBriefing(briefingEndpoint);
    service.reset();
    EXPECT_TRUE(awaitValue(std::move(task)));
}
