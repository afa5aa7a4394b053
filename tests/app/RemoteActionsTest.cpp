#include "app/RemoteActions.h"

#include "fakes/RecordingUrlOpener.h"
#include "state/Ticker.h"
#include "support/StateHarness.h"

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

/// A briefing with a habit and a chore.
QByteArray dayToActOn() {
    return QByteArray(briefingBody(1))
        .replace(R"("top":[])", R"("top":[{"id":"bins","name":"Bins","room":"Yard"}])")
        .replace(
            R"("items":[])", R"("items":[{"id":"read","name":"Read","done":false,)"
                             R"("count":0,"target":1,"streak":0}])");
}

class RemoteActionsTest : public testing::Test, protected StateHarness {
protected:
    void SetUp() override {
        start();
        ticker.emplace(clock);
        remote.emplace(RemoteActions::Dependencies{*state, *ticker, preferences, urls});
    }

    void load() {
        transport.complete(0, FakeHttpTransport::answer(200, dayToActOn()));
        settle();
        ASSERT_TRUE(state->lastGood());
        ASSERT_EQ(state->lastGood()->habits.items.size(), 1U);
        ASSERT_EQ(state->lastGood()->chores.top.size(), 1U);
    }

    RemoteActions::Done keep() {
        return [this](const std::optional<QString>& failure) { outcomes.push_back(failure); };
    }

    using Outcomes = std::vector<std::optional<QString>>;

    RecordingUrlOpener urls;
    std::optional<Ticker> ticker;
    std::optional<RemoteActions> remote;
    Outcomes outcomes;
};

} // namespace

TEST_F(RemoteActionsTest, ThereIsNothingToActOnWithoutABriefing) {
    remote->toggleHabit(u"read"_s, keep());
    remote->finishChore(u"bins"_s, keep());
    remote->join({}, keep());
    EXPECT_EQ(outcomes, Outcomes(3, u"There is no briefing yet"_s));
    EXPECT_EQ(remote->agenda().error(), u"There is no briefing yet"_s);
    transport.complete(0, FakeHttpTransport::answer(401));
    EXPECT_EQ(remote->agenda().error(), u"Token rejected (401)"_s);
}

TEST_F(RemoteActionsTest, AnswersWhenTheServiceHasTakenIt) {
    load();
    remote->toggleHabit(u"Read"_s, keep());
    EXPECT_TRUE(outcomes.empty());
    transport.complete(1, FakeHttpTransport::answer(200));
    EXPECT_TRUE(outcomes.empty());
    transport.complete(2, FakeHttpTransport::answer(200, dayToActOn()));
    settle();
    EXPECT_EQ(outcomes, Outcomes{std::nullopt});
}

TEST_F(RemoteActionsTest, TellsWhyTheServiceRefused) {
    load();
    remote->finishChore(u"bins"_s, keep());
    transport.complete(1, FakeHttpTransport::answer(409, R"({"error":"Not today"})"));
    settle();
    remote->capture(u"x"_s, keep());
    transport.complete(2, FakeHttpTransport::answer(409, R"({"error":""})"));
    settle();
    EXPECT_EQ(outcomes, (Outcomes{u"Not today"_s, u"It was refused, and no reason was given"_s}));
}

TEST_F(RemoteActionsTest, TheSameIsNotDoneTwiceAtOnce) {
    load();
    for (int i = 0; i < 2; ++i) {
        remote->toggleHabit(u"read"_s, keep());
        remote->capture(u"x"_s, keep());
    }
    const Outcomes refused(2, u"The same is under way already"_s);
    EXPECT_EQ(outcomes, refused);
    EXPECT_EQ(transport.requests().size(), 3U);
}

TEST_F(RemoteActionsTest, SendsNothingForWhatIsNotThere) {
    load();
    remote->toggleHabit(u"bins"_s, keep());
    remote->finishChore(u"read"_s, keep());
    remote->capture(u" \n"_s, keep());
    remote->capture(QString(65537, u'x'), keep());
    remote->join({}, keep());
    EXPECT_EQ(outcomes.size(), 5U);
    for (const auto& outcome : outcomes)
        EXPECT_TRUE(outcome);
    EXPECT_EQ(transport.requests().size(), 1U);
    EXPECT_TRUE(urls.opened.empty());
}
