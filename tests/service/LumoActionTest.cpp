#include "service/LumoAction.h"

#include "briefing/TextBounds.h"

#include <gtest/gtest.h>

using namespace lumora;
using namespace Qt::Literals::StringLiterals;

namespace {

const ActionResult taken{true, std::nullopt, std::nullopt};

} // namespace

TEST(LumoAction, SaysWhatItIsAndWhatItIsAbout) {
    using Body = LumoAction::Body;
    EXPECT_EQ(
        LumoAction::habitToggle(u"read"_s).body(),
        (Body{{u"type"_s, u"habit.toggle"_s}, {u"id"_s, u"read"_s}}));
    EXPECT_EQ(
        LumoAction::choreDone(u"plants"_s).body(),
        (Body{{u"type"_s, u"chore.done"_s}, {u"id"_s, u"plants"_s}}));
    EXPECT_EQ(
        LumoAction::capture(u"milk"_s).body(),
        (Body{{u"type"_s, u"capture"_s}, {u"text"_s, u"milk"_s}}));
    EXPECT_EQ(LumoAction::spendingRefresh().body(), (Body{{u"type"_s, u"spending.refresh"_s}}));
}

TEST(LumoAction, KeepsWhatItWasGiven) {
    EXPECT_EQ(LumoAction::capture(u" two  spaces\n"_s).body()[u"text"_s], u" two  spaces\n"_s);
    EXPECT_EQ(LumoAction::habitToggle(QString()).body().size(), 2);
    EXPECT_EQ(LumoAction::choreDone(u""_s).body()[u"id"_s], u""_s);
}

TEST(LumoAction, IsEqualWhenItAsksForTheSame) {
    EXPECT_EQ(LumoAction::habitToggle(u"a"_s), LumoAction::habitToggle(u"a"_s));
    EXPECT_NE(LumoAction::habitToggle(u"a"_s), LumoAction::habitToggle(u"b"_s));
    EXPECT_NE(LumoAction::habitToggle(u"a"_s), LumoAction::choreDone(u"a"_s));
}

TEST(ActionResult, HoldsWhatTheReplySays) {
    EXPECT_EQ(
        decodeActionResult(R"({"ok": true, "queued": false, "reason": "R"})"),
        (ActionResult{true, false, u"R"_s}));
    EXPECT_EQ(
        decodeActionResult(R"({"queued": true})"),
        (ActionResult{std::nullopt, true, std::nullopt}));
    EXPECT_EQ(
        decodeActionResult(R"({"ok": false, "reason": ""})"),
        (ActionResult{false, std::nullopt, u""_s}));
}

TEST(ActionResult, WhatIsMissingOrNullIsAbsent) {
    EXPECT_EQ(decodeActionResult("{}"), ActionResult());
    EXPECT_EQ(
        decodeActionResult(R"({"ok": null, "queued": null, "reason": null})"), ActionResult());
}

TEST(ActionResult, UnknownMembersAreIgnored) {
    EXPECT_EQ(
        decodeActionResult(R"({"job": {"id": 7}, "ok": false, "tags": ["a", 1]})"),
        (ActionResult{false, std::nullopt, std::nullopt}));
}

TEST(ActionResult, WhatDoesNotDecodeWasTaken) {
    const QByteArray bodies[] = {
        "",
        " ",
        "null",
        "true",
        "\"ok\"",
        "[]",
        "[{\"ok\": false}]",
        "<html></html>",
        "{\"ok\": ",
        "{\"ok\": false} trailing",
        "{\"reason\": \"\xff\"}"};
    for (const QByteArray& body : bodies)
        EXPECT_EQ(decodeActionResult(body), taken) << body.constData();
}

TEST(ActionResult, AMemberOfTheWrongTypeDiscardsTheOthers) {
    const QByteArray bodies[] = {
        R"({"ok": false, "queued": "false", "reason": "R"})",
        R"({"ok": 0, "queued": false})",
        R"({"ok": "false"})",
        R"({"ok": false, "queued": false, "reason": 5})",
        R"({"ok": false, "queued": false, "reason": ["R"]})",
        R"({"ok": false, "queued": {}})"};
    for (const QByteArray& body : bodies)
        EXPECT_EQ(decodeActionResult(body), taken) << body.constData();
}

TEST(ActionResult, TheLastOfSeveralEqualKeysCounts) {
    EXPECT_EQ(decodeActionResult(R"({"ok": "x", "ok": false})").ok, false);
}

TEST(ActionResult, OtherMembersDoNotMatter) {
    EXPECT_EQ(decodeActionResult(R"({"x": 99999999999999999999999, "ok": false})").ok, false);
}

TEST(ActionResult, AReasonIsCutWhereNobodyReadsOn) {
    const auto result = decodeActionResult("{\"reason\": \"" + QByteArray(10'000, 'x') + "\"}");
    EXPECT_EQ(result.reason, QString(longestPassage - 1, u'x') + u'…');
}
