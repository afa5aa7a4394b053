#include "e2e/AccessibleTree.h"

using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

/// A person with a screen reader who opens the demo's panel.
class PanelAccessibility : public testing::Test {
protected:
    void SetUp() override {
        lumora.start({u"--demo"_s});
        ASSERT_TRUE(lumora.comesToShow({{u"state"_s, u"loaded"_s}}));
        ASSERT_EQ(lumora.run({}).exitCode, 0); // opens the panel of the one that runs
        ASSERT_TRUE(tree.comesToBe(
            title, [](const AccessibleNode& panel) { return panel.has(u"active"_s); }));
    }

    const QString title = u"Lumora"_s;
    ProgramHarness lumora;
    AccessibleTree tree{lumora};
};

} // namespace

TEST_F(PanelAccessibility, RevealedAmountsAreThereToBeReadAndHiddenOnesAreNot) {
    const auto showsAmounts = [](const AccessibleNode& panel) {
        return panel.spoken().contains(u'$');
    };
    const AccessibleNode reveal =
        tree.window(title).find(u"Show month-to-date"_s, u"push button"_s);
    ASSERT_TRUE(reveal.has(u"showing"_s));
    EXPECT_FALSE(showsAmounts(tree.window(title)));

    ASSERT_TRUE(tree.press(reveal));
    EXPECT_TRUE(tree.comesToBe(title, showsAmounts));
    ASSERT_TRUE(tree.press(tree.window(title).find(u"Hide again"_s)));
    EXPECT_TRUE(
        tree.comesToBe(title, [&](const AccessibleNode& panel) { return !showsAmounts(panel); }));
}
