#include "app/DemoServiceProcess.h"

#include <gtest/gtest.h>

using namespace lumora;
using namespace Qt::Literals::StringLiterals;

TEST(DemoAddress, IsReadFromTheServicesFirstLines) {
    const auto address = parseDemoAddress("endpoint http://127.0.0.1:1/api/briefing\ntoken abc\n");
    ASSERT_TRUE(address);
    EXPECT_EQ(address->endpoint, u"http://127.0.0.1:1/api/briefing"_s);
    EXPECT_EQ(address->token, u"abc"_s);
}

TEST(DemoAddress, IsAbsentUntilItIsComplete) {
    EXPECT_FALSE(parseDemoAddress({}));
    EXPECT_FALSE(parseDemoAddress("endpoint http://127.0.0.1:1/api/briefing\n"));
    EXPECT_FALSE(parseDemoAddress("endpoint http://127.0.0.1:1/api/briefing\ntoken ab"));
}
