#include "fakes/FakeClock.h"
#include "fakes/FakeHttpTransport.h"
#include "fakes/FakeSecretStore.h"
#include "platform/Background.h"
#include "service/KeychainService.h"
#include "service/LumoService.h"
#include "support/Await.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QStringDecoder>

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

using Performed = tl::expected<ActionResult, LumoError>;
using Headers = QList<QPair<QByteArray, QByteArray>>;
using Waits = std::vector<std::chrono::milliseconds>;

const QString endpoint = u"https://example.com/api/briefing"_s;

class LumoServiceActionsTest : public testing::Test {
protected:
    LumoServiceActionsTest() { setToken("T"); }

    void setToken(const QByteArray& token) {
        store.put({u"com.lumora.app"_s, u"briefingToken"_s}, token);
    }

    void prepare(int status, const QByteArray& body = {}) {
        transport.prepare(FakeHttpTransport::answer(status, body));
    }

    /// The outcome of an action whose exchanges were all prepared, however long it has to wait.
    Performed perform(const LumoAction& action, const QString& at = endpoint) {
        auto task = service->perform(action, at);
        clock.advance(1h);
        return awaitValue(std::move(task));
    }

    /// The body that was sent for `action`, read as JSON.
    QJsonObject sentFor(const LumoAction& action) {
        prepare(200);
        EXPECT_TRUE(perform(action));
        QJsonParseError error;
        const auto document =
            QJsonDocument::fromJson(transport.requests().back().body.value_or("none"), &error);
        EXPECT_EQ(error.error, QJsonParseError::NoError) << qPrintable(error.errorString());
        return document.object();
    }

    Background background;
    FakeClock clock;
    FakeHttpTransport transport;
    FakeSecretStore store;
    KeychainService keychain{store};
    std::unique_ptr<LumoService> service =
        std::make_unique<LumoService>(transport, keychain, clock, background);
};

Performed failedWith(LumoError error) {
    return tl::unexpected(std::move(error));
}

} // namespace

TEST_F(LumoServiceActionsTest, PostsTheActionBesideTheBriefing) {
    prepare(200, R"({"ok": true, "queued": false, "reason": "R"})");
    const auto result = perform(LumoAction::habitToggle(u"read"_s));
    EXPECT_EQ(result, (ActionResult{true, false, u"R"_s}));
    ASSERT_EQ(transport.requests().size(), 1U);
    const HttpRequest& request = transport.requests().front();
    EXPECT_EQ(request.method, "POST");
    EXPECT_EQ(request.url, QUrl(endpoint + u"/action"_s));
    EXPECT_EQ(
        request.headers, (Headers{
                             {"X-Api-Key", "T"},
                             {"Accept", "application/json"},
                             {"Content-Type", "application/json"}}));
    EXPECT_EQ(request.body, R"({"id":"read","type":"habit.toggle"})");
}

TEST_F(LumoServiceActionsTest, TheBodiesHoldTheirMembersAndNoOthers) {
    EXPECT_EQ(
        sentFor(LumoAction::choreDone(u"plants"_s)),
        (QJsonObject{{u"type"_s, u"chore.done"_s}, {u"id"_s, u"plants"_s}}));
    EXPECT_EQ(
        sentFor(LumoAction::capture(u" as it stands \n"_s)),
        (QJsonObject{{u"type"_s, u"capture"_s}, {u"text"_s, u" as it stands \n"_s}}));
    EXPECT_EQ(
        sentFor(LumoAction::spendingRefresh()), (QJsonObject{{u"type"_s, u"spending.refresh"_s}}));
    EXPECT_EQ(transport.requests().back().body, R"({"type":"spending.refresh"})");
}

TEST_F(LumoServiceActionsTest, AnyTextSurvivesTheJourney) {
    const QString texts[] = {
        u""_s,
        u"\",\"type\":\"capture"_s,
        u"back\\slash / \b\t\r\n"_s,
        u"kétség 👩🏽‍💻 קוד \u2028"_s,
        QString(QChar(0)) + u"after nothing"_s,
        QString(10'240, u'"'),
    };
    for (const QString& text : texts) {
        EXPECT_EQ(sentFor(LumoAction::habitToggle(text))[u"id"_s].toString(), text);
        EXPECT_EQ(sentFor(LumoAction::choreDone(text))[u"id"_s].toString(), text);
        EXPECT_EQ(sentFor(LumoAction::capture(text))[u"text"_s].toString(), text);
    }
}

TEST_F(LumoServiceActionsTest, HalfACharacterIsStillSentAsProperText) {
    const QJsonObject sent = sentFor(LumoAction::capture(u"a"_s + QChar(0xD83D) + u"b"_s));
    EXPECT_TRUE(sent[u"text"_s].toString().startsWith(u'a'));
    EXPECT_TRUE(sent[u"text"_s].toString().endsWith(u'b'));
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString body = decoder.decode(transport.requests().back().body.value_or(""));
    EXPECT_FALSE(decoder.hasError()) << qPrintable(body);
}

TEST_F(LumoServiceActionsTest, SlashesAndSpacesAroundTheEndpointDoNotMatter) {
    prepare(200);
    EXPECT_TRUE(
        perform(LumoAction::spendingRefresh(), u" \n https://example.com/api/briefing/ "_s));
    EXPECT_EQ(transport.requests()[0].url, QUrl(u"https://example.com/api/briefing/action"_s));
}

TEST_F(LumoServiceActionsTest, AnEmptyReplyMeansTaken) {
    for (const int status : {200, 202, 204}) {
        prepare(status);
        EXPECT_EQ(
            perform(LumoAction::spendingRefresh()),
            (ActionResult{true, std::nullopt, std::nullopt}));
    }
}

TEST_F(LumoServiceActionsTest, AReplyThatIsNotOkIsAResultToo) {
    prepare(200, R"({"ok": false})");
    EXPECT_EQ(
        perform(LumoAction::choreDone(u"plants"_s)),
        (ActionResult{false, std::nullopt, std::nullopt}));
    EXPECT_EQ(transport.requests().size(), 1U);
}

TEST_F(LumoServiceActionsTest, ARefusalCarriesTheServersWordsAndIsNotRepeated) {
    const std::pair<HttpOutcome, LumoError> rows[] = {
        {FakeHttpTransport::answer(409, R"({"error": "E"})"), LumoError::actionRejected(u"E"_s)},
        {FakeHttpTransport::answer(404, "<html></html>"), LumoError::serverError(404)},
        {FakeHttpTransport::answer(401, R"({"error": "E"})"), LumoError::unauthorized()},
        {FakeHttpTransport::answer(302), LumoError::serverError(302)},
    };
    for (const auto& [outcome, error] : rows) {
        const std::size_t before = transport.requests().size();
        transport.prepare(outcome);
        EXPECT_EQ(perform(LumoAction::choreDone(u"plants"_s)), failedWith(error));
        EXPECT_EQ(transport.requests().size(), before + 1);
    }
    EXPECT_TRUE(clock.waits().empty());
}

TEST_F(LumoServiceActionsTest, AFailingServerIsAskedThreeTimesForTheSame) {
    for (int i = 0; i < 4; ++i)
        prepare(500);
    EXPECT_EQ(perform(LumoAction::choreDone(u"plants"_s)), failedWith(LumoError::serverError(500)));
    ASSERT_EQ(transport.requests().size(), 3U);
    EXPECT_EQ(clock.waits(), (Waits{500ms, 1000ms}));
    for (const HttpRequest& request : transport.requests()) {
        EXPECT_EQ(request.method, "POST");
        EXPECT_EQ(request.body, R"({"id":"plants","type":"chore.done"})");
    }
}

TEST_F(LumoServiceActionsTest, ATakenActionIsNotRepeated) {
    prepare(429);
    transport.prepare(FakeHttpTransport::failure(u"Connection refused"_s));
    prepare(200, "nonsense");
    EXPECT_TRUE(perform(LumoAction::capture(u"milk"_s)));
    EXPECT_EQ(transport.requests().size(), 3U);
    EXPECT_EQ(clock.pendingWaitCount(), 0U);
}

TEST_F(LumoServiceActionsTest, WithoutTokenOrAddressNothingIsSent) {
    const auto action = LumoAction::spendingRefresh();
    for (const QString& at :
         {u""_s, u"  "_s, u"/"_s, u"example.com/api"_s, u"http://example.com"_s})
        EXPECT_FALSE(perform(action, at)) << qPrintable(at);
    EXPECT_EQ(perform(action, u"https://exa mple.com"_s), failedWith(LumoError::invalidURL()));
    setToken("");
    EXPECT_EQ(perform(action), failedWith(LumoError::notConfigured()));
    EXPECT_TRUE(transport.requests().empty());
}

TEST_F(LumoServiceActionsTest, ActionsAndFetchesOverlap) {
    auto action = service->perform(LumoAction::capture(u"milk"_s), endpoint);
    auto fetch = service->fetchBriefing(endpoint);
    EXPECT_EQ(transport.pendingCount(), 2U);
    transport.complete(1, FakeHttpTransport::answer(401));
    EXPECT_TRUE(fetch.isReady());
    EXPECT_FALSE(action.isReady());
    transport.complete(0, FakeHttpTransport::answer(200));
    EXPECT_TRUE(awaitValue(std::move(action)));
}

TEST_F(LumoServiceActionsTest, DestroyedDuringAWaitItMakesNoFurtherRequest) {
    prepare(503);
    auto task = service->perform(LumoAction::capture(u"milk"_s), endpoint);
    service.reset();
    clock.advance(1h);
    EXPECT_EQ(awaitValue(std::move(task)), failedWith(LumoError::serverError(503)));
    EXPECT_EQ(transport.requests().size(), 1U);
}
