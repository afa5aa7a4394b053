#include "linux/http/ReceivedAnswer.h"

#include <gtest/gtest.h>

using namespace lumora;

TEST(ReceivedAnswer, PutsTheBodyTogether) {
    ReceivedAnswer answer(100, 100);
    EXPECT_TRUE(answer.takeBody("half a "));
    EXPECT_TRUE(answer.takeBody("body"));
    EXPECT_EQ(answer.body(), "half a body");
    EXPECT_FALSE(answer.isTooLarge());
}

TEST(ReceivedAnswer, TakesABodyUpToItsLimit) {
    ReceivedAnswer answer(100, 4);
    EXPECT_TRUE(answer.takeBody("1234"));
    EXPECT_FALSE(answer.takeBody("5"));
    EXPECT_EQ(answer.body(), "1234");
    EXPECT_TRUE(answer.isTooLarge());
}

TEST(ReceivedAnswer, CountsTheLinesOfAllHeads) {
    ReceivedAnswer answer(11, 100); // a byte less than all three
    EXPECT_TRUE(answer.takeHeadLine("103\r\n"));
    EXPECT_TRUE(answer.takeHeadLine("\r\n"));
    EXPECT_FALSE(answer.takeHeadLine("200\r\n"));
    EXPECT_TRUE(answer.isTooLarge());
}

TEST(ReceivedAnswer, AnEmptyLineEndsAHead) {
    ReceivedAnswer answer(100, 100);
    EXPECT_FALSE(answer.isHeadComplete());
    EXPECT_TRUE(answer.takeHeadLine("103\r\n"));
    EXPECT_TRUE(answer.takeHeadLine("\r\n"));
    EXPECT_TRUE(answer.isHeadComplete());
    EXPECT_TRUE(answer.takeHeadLine("200\r\n"));
    EXPECT_FALSE(answer.isHeadComplete());
    EXPECT_TRUE(answer.takeHeadLine("\r\n"));
    EXPECT_TRUE(answer.isHeadComplete());
}
