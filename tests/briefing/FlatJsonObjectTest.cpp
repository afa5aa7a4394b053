#include "briefing/FlatJsonObject.h"

#include <gtest/gtest.h>

using namespace lumora;
using namespace Qt::Literals::StringLiterals;

namespace {

FlatJsonObject parsed(const char* json) {
    return FlatJsonObject::parse(json).value();
}

} // namespace

TEST(FlatJsonObject, ReadsTruthValuesAndTexts) {
    const auto object = parsed(R"({"ok":true,"queued":false,"reason":"R\u0000é"})");
    EXPECT_EQ(object.boolean("ok"_L1).value(), true);
    EXPECT_EQ(object.boolean("queued"_L1).value(), false);
    EXPECT_EQ(object.string("reason"_L1).value(), QString(u"R\0é"_s));
}

TEST(FlatJsonObject, MissingAndNullAreAbsent) {
    const auto object = parsed(R"({"ok":null})");
    EXPECT_EQ(object.boolean("ok"_L1).value(), std::nullopt);
    EXPECT_EQ(object.string("ok"_L1).value(), std::nullopt);
    EXPECT_EQ(object.boolean("queued"_L1).value(), std::nullopt);
    EXPECT_EQ(object.string("reason"_L1).value(), std::nullopt);
}

TEST(FlatJsonObject, AnotherTypeIsAnErrorThatNamesTheMember) {
    const auto object = parsed(R"({"a":"yes","b":1,"c":[],"d":{},"e":true})");
    for (const auto key : {"a"_L1, "b"_L1, "c"_L1, "d"_L1})
        EXPECT_EQ(object.boolean(key).error(), (DecodeError{key, u"Expected a boolean"_s}));
    for (const auto key : {"b"_L1, "c"_L1, "d"_L1, "e"_L1})
        EXPECT_EQ(object.string(key).error(), (DecodeError{key, u"Expected a string"_s}));
}

TEST(FlatJsonObject, TheLastOfSeveralEqualKeysCounts) {
    EXPECT_EQ(parsed(R"({"ok":"x","ok":true})").boolean("ok"_L1).value(), true);
}

TEST(FlatJsonObject, OnlyAnObjectIsOne) {
    for (const char* json : {"", "x", "[]", "true", "\"{}\"", "{}{}", "{\"ok\":tru}"}) {
        const auto result = FlatJsonObject::parse(json);
        ASSERT_FALSE(result) << json;
        EXPECT_TRUE(result.error().path.isEmpty()) << json;
        EXPECT_FALSE(result.error().description.isEmpty()) << json;
    }
}

TEST(FlatJsonObject, OtherMembersDoNotMatter) {
    const auto object = parsed(R"({"x":99999999999999999999999,"ok":true})");
    EXPECT_EQ(object.boolean("ok"_L1).value(), true);
}
