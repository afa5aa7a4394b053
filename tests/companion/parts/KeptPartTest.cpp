#include "companion/parts/Asking.h"
#include "companion/parts/Parts.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace lumora::companion;
using namespace std::chrono_literals;

namespace {

constexpr std::chrono::sys_seconds noon = std::chrono::sys_days(2025y / 3 / 4) + 12h;

/// A source that answers when it is told to.
class KeptParts : public testing::Test {
protected:
    std::vector<std::function<void(PartOutcome<FocusPart>)>> questions;
    int changes = 0;
    KeptPart<FocusPart> kept{
        [this](std::chrono::sys_seconds, auto done) { questions.push_back(done); }, 10min,
        [this] { ++changes; }};

    void answer(const PartOutcome<FocusPart>& outcome) {
        ASSERT_FALSE(questions.empty());
        auto question = questions.front();
        questions.erase(questions.begin());
        question(outcome);
    }
};

} // namespace

TEST_F(KeptParts, AreAskedForWhenTheyAreDue) {
    kept.refreshDue(noon);
    EXPECT_TRUE(kept.isAsking());
    EXPECT_EQ(kept.part(), std::nullopt);
    answer(FocusPart{0.5});
    EXPECT_EQ(kept.part(), FocusPart{0.5});
    EXPECT_EQ(kept.state(), (SourceState{noon, {}, {}}));
    EXPECT_EQ(changes, 1);
    kept.refreshDue(noon + 10min - 1s);
    EXPECT_FALSE(kept.isAsking());
    kept.refreshDue(noon + 10min);
    EXPECT_TRUE(kept.isAsking());
    answer(FocusPart{0.5});
    kept.refreshDue(noon - 1h); // the clock was set back
    EXPECT_TRUE(kept.isAsking());
}

TEST_F(KeptParts, StayGoodWhenTheirSourceFails) {
    kept.refreshDue(noon);
    answer(FocusPart{0.5});
    kept.refreshDue(noon + 10min);
    answer(tl::unexpected(u"gone"_s));
    kept.refreshDue(noon + 20min);
    answer(tl::unexpected(u"still gone"_s));
    EXPECT_EQ(kept.part(), FocusPart{0.5});
    EXPECT_EQ(kept.state(), (SourceState{noon, u"still gone"_s, noon + 10min}));
    kept.refreshDue(noon + 30min);
    answer(FocusPart{0.6});
    EXPECT_EQ(kept.state(), (SourceState{noon + 30min, {}, {}}));
}

TEST_F(KeptParts, AnswerWhoeverWaitsWithWhatIsNewer) {
    int first = 0;
    int second = 0;
    kept.refresh(noon, [&] { ++first; });
    kept.refresh(noon + 1s, [&] { ++second; }); // may not be content with an answer from before
    EXPECT_EQ(questions.size(), 1U);
    answer(FocusPart{0.5});
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 0);
    answer(FocusPart{0.6});
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 1);
    EXPECT_EQ(kept.part(), FocusPart{0.6});
    EXPECT_TRUE(questions.empty());
}
