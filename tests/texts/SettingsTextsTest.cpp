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

TEST(SettingsTexts, SaysWhyAPreferenceIsNotStored) {
    EXPECT_EQ(
        unstoredText(u"~/a: No space left on device"_s),
        u"Not stored (~/a: No space left on device). It holds until Lumora ends."_s);
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

TEST(SettingsTexts, ExplainsTheHintsInTheDesktopsWords) {
    const auto explained = [](LoginItemStatus status, const QString& desktop) {
        return loginItemExplanation(status, u"~/.config/autostart/a.desktop"_s, desktop);
    };
    EXPECT_EQ(
        explained(LoginItemStatus::NotFound, u"KDE"_s),
        u"On this desktop Lumora starts at login by ~/.config/autostart/a.desktop, but the program "
        "that the file names is not there. Keep Lumora in one place and turn the switch on: that "
        "writes the file anew."_s);
    EXPECT_EQ(
        explained(LoginItemStatus::RequiresApproval, u"KDE"_s),
        u"On this desktop Lumora starts at login by ~/.config/autostart/a.desktop, and that file "
        u"is "
        "switched off. Turn it on here, or in System Settings › Autostart."_s);
    EXPECT_EQ(explained(LoginItemStatus::NotRegistered, u"KDE"_s), std::nullopt);
    EXPECT_EQ(explained(LoginItemStatus::Enabled, u"KDE"_s), std::nullopt);
    EXPECT_TRUE(loginItemExplanation(LoginItemStatus::NotFound, {}, {})
                    ->contains(u" by its autostart entry, "_s));
}

TEST(SettingsTexts, KnowsWhereEachDesktopSwitchesProgramsOff) {
    const auto place = [](const QString& desktop) {
        const auto text = loginItemExplanation(LoginItemStatus::RequiresApproval, {}, desktop);
        return text->section(u"here, or in "_s, 1);
    };
    EXPECT_EQ(place(u"XFCE"_s), u"Session and Startup › Application Autostart."_s);
    EXPECT_EQ(place(u"ubuntu:GNOME"_s), u"Tweaks › Startup Applications."_s);
    EXPECT_EQ(place(u"Budgie:GNOME"_s), u"Budgie Desktop Settings › Autostart."_s);
    EXPECT_EQ(place(u"sway"_s), u"the desktop's settings for programs that start at login."_s);
    EXPECT_EQ(place({}), u"the desktop's settings for programs that start at login."_s);
}

TEST(SettingsTexts, SaysWhatTheKeychainIs) {
    EXPECT_EQ(
        keychainExplanation(u"KWallet"_s),
        u"On this desktop the keychain is KWallet. The token is there as “Lumora briefing token”, "
        "and in no file of Lumora's own."_s);
    EXPECT_TRUE(keychainExplanation({}).startsWith(
        u"On this desktop the keychain is the desktop's keyring (Secret Service). "_s));
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
