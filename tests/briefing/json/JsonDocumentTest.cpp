#include "briefing/json/JsonDocument.h"

#include <gtest/gtest.h>

using namespace lumora;

namespace {

std::string mended(const char* json) {
    return withHugeIntegersAsFloats(json).toStdString();
}

} // namespace

TEST(JsonNumbers, IntegersBeyond64BitsBecomeFloats) {
    EXPECT_EQ(mended("[18446744073709551616]"), "[18446744073709551616e0]");
    EXPECT_EQ(mended("[-9223372036854775809,1]"), "[-9223372036854775809e0,1]");
    EXPECT_EQ(mended(R"({"a":99999999999999999999999})"), R"({"a":99999999999999999999999e0})");
    EXPECT_EQ(mended("99999999999999999999999"), "99999999999999999999999e0");
}

TEST(JsonNumbers, EverythingElseStaysAsItIs) {
    for (const char* json : {
             "",
             "[9223372036854775807,-9223372036854775808,18446744073709551615]",
             "[99999999999999999999999.5,99999999999999999999999e3,1e999,-0]",
             R"({"99999999999999999999999":"-99999999999999999999999"})",
             R"(["\"99999999999999999999999","\\",1,"\\\"99999999999999999999999"])",
             R"("99999999999999999999999)",
             R"("99999999999999999999999\)",
             "-",
             "[--99999999999999999999999]",
         })
        EXPECT_EQ(mended(json), json);
}
