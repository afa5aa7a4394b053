#include "ui/theme/Theme.h"

#include <QPalette>

#include <gtest/gtest.h>

using namespace lumora;

namespace {

constexpr double readableText = 4.5;
constexpr double readableSymbol = 3.0;

/// Every role that a text is drawn in.
constexpr ColorRole textRoles[] = {
    ColorRole::Primary, ColorRole::Secondary, ColorRole::Orange, ColorRole::Green};

/// Those of them that stand in clickable rows.
constexpr ColorRole rowRoles[] = {ColorRole::Primary, ColorRole::Secondary, ColorRole::Orange};

Theme own(ColorScheme scheme) {
    return Theme(scheme, QFont());
}

QPalette desktop(QRgb window, QRgb text, QRgb highlight) {
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(window));
    palette.setColor(QPalette::WindowText, QColor(text));
    palette.setColor(QPalette::Highlight, QColor(highlight));
    return palette;
}

/// `over` with its opacity, on `under`.
QColor blended(const QColor& over, const QColor& under) {
    const auto mix = [alpha = over.alphaF()](float a, float b) {
        return a * alpha + b * (1 - alpha);
    };
    return QColor::fromRgbF(
        mix(over.redF(), under.redF()), mix(over.greenF(), under.greenF()),
        mix(over.blueF(), under.blueF()));
}

void expectReadable(const Theme& theme) {
    const QColor background = theme.color(ColorRole::Background);
    const QColor hovered = blended(theme.color(ColorRole::Hover), background);
    for (const ColorRole role : textRoles)
        EXPECT_GE(contrastRatio(theme.color(role), background), readableText) << int(role);
    for (const ColorRole role : rowRoles)
        EXPECT_GE(contrastRatio(theme.color(role), hovered), readableText)
            << int(role) << " under the pointer";
    EXPECT_GE(contrastRatio(theme.color(ColorRole::Green), hovered), readableSymbol);
    EXPECT_GE(contrastRatio(theme.color(ColorRole::Accent), background), readableSymbol);
    EXPECT_GE(
        contrastRatio(theme.color(ColorRole::OnAccent), theme.color(ColorRole::Accent)),
        readableText);
    const QColor badge = blended(theme.color(ColorRole::Quaternary), background);
    EXPECT_GE(contrastRatio(theme.color(ColorRole::Primary), badge), readableText);
}

} // namespace

TEST(Contrast, IsTheRatioOfLuminances) {
    EXPECT_NEAR(contrastRatio(Qt::black, Qt::white), 21, 0.01);
    EXPECT_NEAR(contrastRatio(Qt::white, Qt::black), 21, 0.01);
    EXPECT_NEAR(contrastRatio(Qt::white, Qt::white), 1, 0.01);
    EXPECT_NEAR(contrastRatio(QColor(0x77, 0x77, 0x77), Qt::white), 4.48, 0.01);
    EXPECT_NEAR(contrastRatio(QColor(0, 0, 0, 0), Qt::white), 1, 0.01);
}

TEST(Theme, IsReadableInBothSchemes) {
    expectReadable(own(ColorScheme::Light));
    expectReadable(own(ColorScheme::Dark));
}

TEST(Theme, IsReadableWithCommonDesktopPalettes) {
    for (const QPalette& palette : {
             desktop(0xefefef, 0x000000, 0x308cc6), // Fusion
             desktop(0xeff0f1, 0x232629, 0x3daee9), // Breeze
             desktop(0x2a2e32, 0xfcfcfc, 0x3daee9), // Breeze Dark
             desktop(0xf6f5f4, 0x2e3436, 0x3584e4), // Adwaita
             desktop(0x353535, 0xeeeeec, 0x15539e), // Adwaita-dark
             desktop(0x000000, 0xffffff, 0xffff00), // high contrast
             desktop(0xffffff, 0x000000, 0x0000ff),
         })
        expectReadable(Theme(palette, QFont()));
}

TEST(Theme, DoesWithoutDesktopColoursThatCannotBeRead) {
    expectReadable(Theme(desktop(0x777777, 0x808080, 0x7a7a7a), QFont()));
    expectReadable(Theme(desktop(0x9a9a9a, 0x000000, 0xffffff), QFont()));
    expectReadable(Theme(desktop(0x6a6a6a, 0xffffff, 0x6b6b6b), QFont()));
}

TEST(Theme, SelectedTextCanBeReadOnEveryAccent) {
    constexpr int steps = 12;
    for (int hue = 0; hue < 360; hue += 360 / steps) {
        for (const int lightness : {20, 60, 90, 128, 160, 200, 240}) {
            const QRgb accent = QColor::fromHsl(hue, 220, lightness).rgb();
            for (const QPalette& palette :
                 {desktop(0xfafafa, 0x1d1d1f, accent), desktop(0x202124, 0xf2f2f4, accent)}) {
                const Theme theme(palette, QFont());
                const QColor ground = theme.color(ColorRole::Accent);
                EXPECT_GE(contrastRatio(theme.color(ColorRole::OnAccent), ground), readableText)
                    << ground.name().toStdString();
            }
        }
    }
}

TEST(Theme, WhatIsRaisedIsNoDarkerThanTheBackgroundAndCarriesEveryText) {
    for (const ColorScheme scheme : {ColorScheme::Light, ColorScheme::Dark}) {
        const Theme theme = own(scheme);
        const QColor raised = theme.color(ColorRole::Raised);
        EXPECT_EQ(raised.alphaF(), 1);
        EXPECT_GE(raised.lightnessF(), theme.color(ColorRole::Background).lightnessF());
        EXPECT_EQ(raised != theme.color(ColorRole::Background), scheme == ColorScheme::Dark);
        for (const ColorRole role : textRoles)
            EXPECT_GE(contrastRatio(theme.color(role), raised), readableText) << int(role);
    }
}

TEST(Theme, TakesAnAccentThatCanBeRead) {
    const QColor red(0xc0, 0x1c, 0x28);
    const QColor yellow(0xff, 0xe0, 0x40);
    Theme light = own(ColorScheme::Light);
    light.setAccent(red);
    EXPECT_EQ(light.color(ColorRole::Accent), red);
    light.setAccent(yellow);
    EXPECT_EQ(light.color(ColorRole::Accent), red);
    Theme dark = own(ColorScheme::Dark);
    dark.setAccent(yellow);
    EXPECT_EQ(dark.color(ColorRole::Accent), yellow);
    for (const Theme& theme : {light, dark})
        expectReadable(theme);
}

TEST(Theme, HoverIsThePrimaryColourAtSevenPercent) {
    for (const ColorScheme scheme : {ColorScheme::Light, ColorScheme::Dark}) {
        const QColor hover = own(scheme).color(ColorRole::Hover);
        EXPECT_NEAR(hover.alphaF(), 0.07, 0.001);
        EXPECT_EQ(hover.rgb(), own(scheme).color(ColorRole::Primary).rgb());
    }
}

TEST(Theme, SizesFollowTheDesktopsFont) {
    QFont base;
    base.setPointSizeF(10);
    const Theme theme(ColorScheme::Light, base);
    EXPECT_DOUBLE_EQ(theme.font(TextRole::Body).pointSizeF(), 10);
    EXPECT_DOUBLE_EQ(theme.font(TextRole::Headline).pointSizeF(), 10);
    EXPECT_EQ(theme.font(TextRole::Headline).weight(), QFont::Bold);
    EXPECT_LT(theme.font(TextRole::Callout).pointSizeF(), 10);
    EXPECT_LT(
        theme.font(TextRole::Caption).pointSizeF(), theme.font(TextRole::Callout).pointSizeF());
    EXPECT_LE(
        theme.font(TextRole::Caption2).pointSizeF(), theme.font(TextRole::Caption).pointSizeF());
    EXPECT_GT(theme.font(TextRole::Title3).pointSizeF(), 10);
}

TEST(Theme, HasOneFontForEachRoleAndWeight) {
    const Theme theme = own(ColorScheme::Light);
    for (const auto role : {TextRole::Body, TextRole::Caption, TextRole::Headline}) {
        for (const auto weight : {QFont::Normal, QFont::Medium, QFont::DemiBold, QFont::Bold}) {
            const QFont font = theme.font(role, weight);
            EXPECT_EQ(font.weight(), role == TextRole::Headline ? QFont::Bold : weight);
            EXPECT_TRUE(font.isCopyOf(theme.font(role, weight))) << "it is looked for only once";
        }
    }
}

TEST(Theme, TakesAFontThatIsSizedInPixels) {
    QFont base;
    base.setPixelSize(20);
    EXPECT_EQ(Theme(ColorScheme::Light, base).font(TextRole::Title3).pixelSize(), 23);
}

TEST(ThemePoint, IsAPixelAtCommonTextSizesAndFollowsTheOthers) {
    const auto widthAt = [](double points) {
        QFont font;
        font.setPointSizeF(points);
        return Theme(ColorScheme::Light, font).pixels(320);
    };
    EXPECT_EQ(widthAt(8), 260);
    EXPECT_EQ(widthAt(10), 320);
    EXPECT_EQ(widthAt(11), 320);
    EXPECT_EQ(widthAt(16), 460);
    EXPECT_EQ(widthAt(24), 700);
    EXPECT_EQ(widthAt(28), 800);
}

TEST(ThemePoint, KnowsFontsThatAreGivenInPixels) {
    QFont font;
    font.setPixelSize(13);
    EXPECT_DOUBLE_EQ(Theme(ColorScheme::Light, font).exact(2.5), 2.5);
    font.setPixelSize(44);
    const Theme large(ColorScheme::Light, font);
    EXPECT_DOUBLE_EQ(large.exact(2.5), 7.5);
    EXPECT_EQ(large.pixels(QMargins(1, 2, 3, 4)), QMargins(3, 6, 9, 12));
}
