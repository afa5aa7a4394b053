#include "linux/http/HeaderValue.h"

#include <gtest/gtest.h>

using namespace lumora;

TEST(HeaderValue, KeepsWhatIsInside) {
    EXPECT_EQ(headerValue("token"), "token");
    EXPECT_EQ(headerValue("a b\tc"), "a b\tc");
    EXPECT_EQ(headerValue("t\xc3\xb6ken"), "t\xc3\xb6ken");
    EXPECT_EQ(headerValue(""), "");
}

TEST(HeaderValue, DropsWhatSurroundsIt) {
    EXPECT_EQ(headerValue("token\n"), "token");
    EXPECT_EQ(headerValue(" \r\n\ttoken\r\n "), "token");
    EXPECT_EQ(headerValue("\n"), "");
}

TEST(HeaderValue, RefusesASecondLine) {
    EXPECT_EQ(headerValue("a\r\nX-Other: b"), std::nullopt);
    EXPECT_EQ(headerValue("a\nb"), std::nullopt);
    EXPECT_EQ(headerValue("a\rb"), std::nullopt);
    EXPECT_EQ(headerValue(QByteArray("a\0b", 3)), std::nullopt);
}
