#include "briefing/Blanks.h"

#include <gtest/gtest.h>

using namespace lumora;

TEST(Blanks, AreSpacesAndTabsOnly) {
    EXPECT_EQ(withoutBlanks(u"\t a b\t "), u"a b");
    EXPECT_EQ(withoutBlanks(u"\na\u00a0"), u"\na\u00a0");
    EXPECT_EQ(withoutBlanks(u"\u2003a\r"), u"\u2003a\r");
    EXPECT_TRUE(withoutBlanks(u" \t ").isEmpty());
    EXPECT_TRUE(withoutBlanks({}).isEmpty());
}
