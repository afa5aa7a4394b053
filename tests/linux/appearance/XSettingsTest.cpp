#include "linux/appearance/XSettings.h"

#include "linux/appearance/XSettingsBytes.h"

#include <gtest/gtest.h>

namespace lumora::tests {
namespace {

using Preference = DesktopAppearance::Preference;

XSettingsBytes sample(bool bigEndian = false) {
    return XSettingsBytes(bigEndian)
        .text("Net/ThemeName", "Arc-Dark")
        .color("Gtk/Color")
        .number("Gtk/EnableAnimations", 0)
        .text("Gtk/FontName", "Inter 10");
}

const XSettings sampleSettings = {
    .numbers = {{"Gtk/EnableAnimations", 0}},
    .texts = {{"Net/ThemeName", "Arc-Dark"}, {"Gtk/FontName", "Inter 10"}}};

qsizetype countOf(const XSettings& settings) {
    return settings.numbers.size() + settings.texts.size();
}

XSettings themed(const QByteArray& name) {
    return {.numbers = {}, .texts = {{"Net/ThemeName", name}}};
}

TEST(XSettings, ReadsBothByteOrders) {
    EXPECT_EQ(parseXSettings(sample(false).bytes()), sampleSettings);
    EXPECT_EQ(parseXSettings(sample(true).bytes()), sampleSettings);
}

TEST(XSettings, ReadsNothingInNothing) {
    EXPECT_EQ(parseXSettings({}), XSettings());
    EXPECT_EQ(parseXSettings(XSettingsBytes().bytes()), XSettings());
}

TEST(XSettings, KeepsWhatStandsBeforeAFault) {
    const auto bytes = XSettingsBytes().number("A", -5).unknown("B").number("C", 7).bytes();
    EXPECT_EQ(parseXSettings(bytes), (XSettings{.numbers = {{"A", -5}}, .texts = {}}));
}

TEST(XSettings, SurvivesACutAnywhere) {
    const QByteArray bytes = sample().bytes();
    for (qsizetype length = 0; length < bytes.size(); ++length) {
        const XSettings settings = parseXSettings(bytes.left(length));
        EXPECT_LT(countOf(settings), countOf(sampleSettings)) << length;
        for (auto it = settings.texts.cbegin(); it != settings.texts.cend(); ++it)
            EXPECT_EQ(it.value(), sampleSettings.texts.value(it.key())) << length;
        for (auto it = settings.numbers.cbegin(); it != settings.numbers.cend(); ++it)
            EXPECT_EQ(it.value(), sampleSettings.numbers.value(it.key(), -1)) << length;
    }
}

TEST(XSettings, SurvivesLengthsThatLie) {
    QByteArray bytes = sample().bytes();
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        QByteArray damaged = bytes;
        damaged[i] = '\xff';
        EXPECT_LE(countOf(parseXSettings(damaged)), 3) << i;
    }
}

TEST(XSettingsWishes, AreAbsentWhereNothingIsSaid) {
    EXPECT_EQ(wishesIn({}), DesktopAppearance::Wishes());
}

TEST(XSettingsWishes, AreThoseOfTheDesktop) {
    const auto wishes = wishesIn(sampleSettings);
    EXPECT_EQ(wishes.colorScheme, Preference::Dark);
    EXPECT_EQ(wishes.animations, false);
    ASSERT_TRUE(wishes.font.has_value());
    EXPECT_EQ(wishes.font->family, QStringLiteral("Inter"));
    EXPECT_EQ(wishes.font->pointSize, 10);
}

TEST(XSettingsWishes, SayNothingOfLightColours) {
    EXPECT_EQ(wishesIn(themed("Adwaita")).colorScheme, std::nullopt);
    EXPECT_EQ(wishesIn(themed("Darkroom")).colorScheme, std::nullopt);
}

TEST(XSettingsWishes, AllowMotion) {
    EXPECT_EQ(wishesIn({.numbers = {{"Gtk/EnableAnimations", 1}}, .texts = {}}).animations, true);
}

TEST(XSettingsWishes, IgnoreValuesOfTheWrongKind) {
    const XSettings settings = {
        .numbers = {{"Net/ThemeName", 1}, {"Gtk/FontName", 2}},
        .texts = {{"Gtk/EnableAnimations", "0"}}};
    EXPECT_EQ(wishesIn(settings), DesktopAppearance::Wishes());
}

} // namespace
} // namespace lumora::tests
