#include "linux/secrets/SecretOutage.h"

#include <gtest/gtest.h>

using namespace lumora;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

class SecretOutageTest : public testing::Test {
protected:
    std::chrono::steady_clock::time_point now{};
    SecretOutage outage{[this] { return now; }};
};

} // namespace

TEST_F(SecretOutageTest, ThereIsNoneAtFirst) {
    EXPECT_EQ(outage.reason(), std::nullopt);
}

TEST_F(SecretOutageTest, LastsHalfAMinute) {
    EXPECT_TRUE(outage.begin(u"silence"_s));
    EXPECT_EQ(outage.reason(), u"silence"_s);
    now += 29'999ms;
    EXPECT_EQ(outage.reason(), u"silence"_s);
    now += 1ms;
    EXPECT_EQ(outage.reason(), std::nullopt);
}

TEST_F(SecretOutageTest, EndsWhenSomethingIsHeard) {
    outage.begin(u"silence"_s);
    outage.end();
    EXPECT_EQ(outage.reason(), std::nullopt);
}

TEST_F(SecretOutageTest, TellsARelapseFromTheFirst) {
    EXPECT_TRUE(outage.begin(u"silence"_s));
    now += 10s;
    outage.end();
    EXPECT_FALSE(outage.begin(u"silence again"_s));
    EXPECT_EQ(outage.reason(), u"silence again"_s);
    now += 30s;
    EXPECT_TRUE(outage.begin(u"silence"_s));
}
