#include "texts/SettingsTexts.h"

#include <gtest/gtest.h>

using namespace lumora;
using namespace Qt::Literals::StringLiterals;

TEST(SettingsTexts, IntervalsAreInMinutes) {
    EXPECT_EQ(intervalText(5), u"5 minutes"_s);
    EXPECT_EQ(intervalText(30), u"30 minutes"_s);
    EXPECT_EQ(intervalText(1), u"1 minute"_s);
}

TEST(SettingsTexts, ResultsAreGoodOrBadNews) {
    EXPECT_EQ(savedResult(), u"✓ Saved"_s);
    EXPECT_EQ(succeededResult(0), u"✓ 0 events today"_s);
    EXPECT_EQ(succeededResult(1), u"✓ 1 events today"_s);
    EXPECT_EQ(succeededResult(3), u"✓ 3 events today"_s);
    EXPECT_EQ(failedResult(u"Token rejected (401)"_s), u"✗ Token rejected (401)"_s);
    EXPECT_TRUE(isGoodNews(savedResult()));
    EXPECT_TRUE(isGoodNews(succeededResult(0)));
    EXPECT_FALSE(isGoodNews(failedResult(u"✓"_s)));
}

TEST(SettingsTexts, HintsAtLoginItemsThatDoNotStart) {
    EXPECT_EQ(
        loginItemHint(LoginItemStatus::NotFound),
        u"Move Lumora to /Applications for this to stick"_s);
    EXPECT_EQ(
        loginItemHint(LoginItemStatus::RequiresApproval),
        u"Turned off in System Settings › General › Login Items"_s);
    EXPECT_EQ(loginItemHint(LoginItemStatus::NotRegistered), std::nullopt);
    EXPECT_EQ(loginItemHint(LoginItemStatus::Enabled), std::nullopt);
}

TEST(SettingsTexts, TheNoteNamesTheEndpoint) {
    EXPECT_EQ(endpointDescription(u" https://day.example/a\n"_s), u"https://day.example/a"_s);
    EXPECT_EQ(endpointDescription({}), u"the endpoint above"_s);
    EXPECT_EQ(endpointDescription(u"  \t"_s), u"the endpoint above"_s);
    EXPECT_EQ(
        plainText(tokenNote({})),
        u"The token is stored in your macOS keychain and sent as the X-Api-Key header to the "
        "endpoint above. Set the matching secret server-side with firebase "
        "functions:secrets:set BRIEFING_TOKEN."_s);
}

TEST(SettingsTexts, OnlyTheCommandIsCode) {
    const QList<TextRun> note = tokenNote(u"https://`x`.example/**b**"_s);
    QStringList code;
    for (const TextRun& run : note) {
        if (run.isCode)
            code += run.text;
    }
    EXPECT_EQ(code, QStringList(u"firebase functions:secrets:set BRIEFING_TOKEN"_s));
    EXPECT_TRUE(plainText(note).contains(u"header to https://`x`.example/**b**. Set"_s));
}
