#include "platform/linux/XSettings.h"

#include "platform/XSettingsBytes.h"

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
    {"Net/ThemeName", QByteArray("Arc-Dark")},
    {"Gtk/EnableAnimations", 0},
    {"Gtk/FontName", QByteArray("Inter 10")}};

TEST(XSettings, ReadsBothByteOrders) {
    EXPECT_EQ(parseXSettings(sample(false).bytes()), sampleSettings);
    EXPECT_EQ(parseXSettings(sample(true).bytes()), sampleSettings);
}

TEST(XSettings, ReadsNothingInNothing) {
    EXPECT_TRUE(parseXSettings({}).isEmpty());
    EXPECT_TRUE(parseXSettings(XSettingsBytes().bytes()).isEmpty());
}

TEST(XSettings, KeepsWhatStandsBeforeAFault) {
    const auto bytes = XSettingsBytes().number("A", -5).unknown("B").number("C", 7).bytes();
    EXPECT_EQ(parseXSettings(bytes), (XSettings{{"A", -5}}));
}

TEST(XSettings, SurvivesACutAnywhere) {
    const QByteArray bytes = sample().bytes();
    for (qsizetype length = 0; length < bytes.size(); ++length) {
        const XSettings settings = parseXSettings(bytes.left(length));
        EXPECT_LT(settings.size(), sampleSettings.size()) << length;
        for (auto it = settings.cbegin(); it != settings.cend(); ++it)
            EXPECT_EQ(it.value(), sampleSettings.value(it.key())) << length;
    }
}

TEST(XSettings, SurvivesLengthsThatLie) {
    QByteArray bytes = sample().bytes();
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        QByteArray damaged = bytes;
        damaged[i] = '\xff';
        EXPECT_LE(parseXSettings(damaged).size(), 3) << i;
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
    EXPECT_EQ(wishesIn({{"Net/ThemeName", QByteArray("Adwaita")}}).colorScheme, std::nullopt);
    EXPECT_EQ(wishesIn({{"Net/ThemeName", QByteArray("Darkroom")}}).colorScheme, std::nullopt);
}

TEST(XSettingsWishes, AllowMotion) {
    EXPECT_EQ(wishesIn({{"Gtk/EnableAnimations", 1}}).animations, true);
}

TEST(XSettingsWishes, IgnoreValuesOfTheWrongKind) {
    const XSettings settings = {
        {"Net/ThemeName", 1}, {"Gtk/FontName", 2}, {"Gtk/EnableAnimations", QByteArray("0")}};
    EXPECT_EQ(wishesIn(settings), DesktopAppearance::Wishes());
}

} // namespace
} // namespace lumora::tests
