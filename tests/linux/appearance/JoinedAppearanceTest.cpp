#include "linux/appearance/JoinedAppearance.h"

#include "fakes/FakeAppearance.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace lumora::tests {
namespace {

using Preference = DesktopAppearance::Preference;
using Wishes = DesktopAppearance::Wishes;

const DesktopFont inter = {.family = u"Inter"_s, .pointSize = 10};
const DesktopFont lato = {.family = u"Lato"_s, .pointSize = 11};

class JoinedAppearanceTest : public testing::Test {
protected:
    JoinedAppearance join(const Wishes& firstWishes, const Wishes& secondWishes) {
        std::vector<std::unique_ptr<DesktopAppearance>> sources;
        sources.push_back(std::make_unique<FakeAppearance>(firstWishes));
        first = static_cast<FakeAppearance*>(sources.back().get());
        sources.push_back(std::make_unique<FakeAppearance>(secondWishes));
        second = static_cast<FakeAppearance*>(sources.back().get());
        return JoinedAppearance(std::move(sources));
    }

    FakeAppearance* first = nullptr;
    FakeAppearance* second = nullptr;
};

TEST_F(JoinedAppearanceTest, BelievesTheFirstThatStatesAWish) {
    const auto joined =
        join({.colorScheme = Preference::Light}, {.colorScheme = Preference::Dark, .font = inter});
    EXPECT_EQ(joined.wishes(), (Wishes{.colorScheme = Preference::Light, .font = inter}));
}

TEST_F(JoinedAppearanceTest, PassesOnTheAccent) {
    const DesktopColor orange{.red = 1, .green = 0.5};
    EXPECT_EQ(join({.accent = orange}, {.font = inter}).wishes().accent, orange);
    EXPECT_EQ(join({.font = inter}, {.accent = orange}).wishes().accent, orange);
}

TEST_F(JoinedAppearanceTest, FollowsItsSources) {
    const auto joined = join({}, {.font = inter, .animations = false});
    const QSignalSpy changed(&joined, &DesktopAppearance::changed);
    second->setWishes({.font = lato, .animations = false});
    EXPECT_EQ(joined.wishes().font, lato);
    first->setWishes({.animations = true});
    EXPECT_EQ(joined.wishes().animations, true);
    EXPECT_EQ(changed.count(), 2);
}

TEST_F(JoinedAppearanceTest, SaysNothingWhenAnOverruledWishChanges) {
    const auto joined = join({.font = inter}, {.font = lato});
    const QSignalSpy changed(&joined, &DesktopAppearance::changed);
    second->setWishes({});
    EXPECT_EQ(joined.wishes().font, inter);
    EXPECT_EQ(changed.count(), 0);
}

TEST(JoinedAppearance, WishesForNothingWithoutSources) {
    EXPECT_EQ(JoinedAppearance({}).wishes(), Wishes());
}

} // namespace
} // namespace lumora::tests
