#include "linux/tray/LabelForm.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace lumora {
namespace {

using Picture = LabelForm::Picture;

constexpr LabelForm textBeside{Picture::Symbol, true};
constexpr LabelForm textDrawn{Picture::SymbolAndText, false};
constexpr LabelForm shortText{Picture::ShortText, false};
constexpr LabelForm shortTextAndBeside{Picture::ShortText, true};
constexpr LabelForm symbolAlone{Picture::Symbol, false};

TEST(LabelForm, HostsThatDrawTextsAreGivenThem) {
    for (const QString& process :
         {u"gnome-shell"_s, u"mate-panel"_s, u"notification-ar"_s, u"unity-panel-ser"_s})
        EXPECT_EQ(labelFormFor({process, u"KDE"_s, {}}), textBeside) << process.toStdString();
}

TEST(LabelForm, HostsThatShowNothingDrawnAreGivenAName) {
    const LabelForm form = labelFormFor({u"ayatana-indicat"_s, u"MATE"_s, {}});
    EXPECT_TRUE(form.isNamed);
    EXPECT_TRUE(form.hasTextBeside);
    EXPECT_FALSE(labelFormFor({u"ayatana-indicat"_s, {}, u"symbol"_s}).hasTextBeside);
    for (const QString& wish : {u"symbol"_s, u"short"_s, u"text"_s})
        EXPECT_TRUE(labelFormFor({u"ayatana-indicat"_s, {}, wish}).isNamed) << wish.toStdString();
}

TEST(LabelForm, HostsWithRoomGetOnePictureOfBoth) {
    EXPECT_EQ(labelFormFor({u"waybar"_s, u"GNOME"_s, {}}), textDrawn);
    for (const QString& wish : {QString(), u"text"_s}) {
        const LabelForm form = labelFormFor({u"xapp-sn-watcher"_s, u"X-Cinnamon"_s, wish});
        EXPECT_EQ(
            form,
            (LabelForm{.picture = Picture::SymbolAndText, .hasTextBeside = false, .height = 24}));
    }
}

TEST(LabelForm, SquaresGetTheShortText) {
    for (const QString& process :
         {u"kded5"_s, u"kded6"_s, u"plasmashell"_s, u"xfce4-panel"_s, u"wrapper-2.0"_s,
          u"lxqt-panel"_s, u"budgie-panel"_s, u"budgie-daemon"_s})
        EXPECT_EQ(labelFormFor({process, u"GNOME"_s, {}}), shortText) << process.toStdString();
}

TEST(LabelForm, TheDesktopTellsOfAHostThatNobodyKnows) {
    EXPECT_EQ(labelFormFor({{}, u"ubuntu:GNOME"_s, {}}), textBeside);
    EXPECT_EQ(labelFormFor({u"some-bar"_s, u"mate"_s, {}}), textBeside);
    EXPECT_EQ(labelFormFor({u"some-bar"_s, u"Unity:Unity7"_s, {}}), textBeside);
    EXPECT_EQ(labelFormFor({u"some-bar"_s, u"sway"_s, {}}), shortTextAndBeside);
    EXPECT_EQ(labelFormFor({}), shortTextAndBeside);
}

LabelForm inTray(const QString& process, const QString& wish = {}) {
    return labelFormFor({process, u"Budgie:GNOME"_s, wish, true});
}

TEST(LabelForm, TraysOfTheOldKindHaveSquaresAndWriteNothing) {
    EXPECT_EQ(inTray({}), shortText);
    EXPECT_EQ(inTray(u"gnome-shell"_s), shortText);
    EXPECT_EQ(inTray(u"trayer"_s), textDrawn);
    EXPECT_EQ(inTray(u"trayer"_s, u"short"_s), shortText);
    EXPECT_EQ(inTray({}, u"symbol"_s), symbolAlone);
    EXPECT_EQ(inTray({}, u"text"_s), textDrawn);
}

TEST(LabelForm, TheUsersWishOverrules) {
    EXPECT_EQ(labelFormFor({u"gnome-shell"_s, u"GNOME"_s, u"short"_s}), shortText);
    EXPECT_EQ(labelFormFor({u"gnome-shell"_s, u"GNOME"_s, u"symbol"_s}), symbolAlone);
    EXPECT_EQ(labelFormFor({u"gnome-shell"_s, u"GNOME"_s, u"text"_s}), textBeside);
    EXPECT_EQ(labelFormFor({u"xfce4-panel"_s, u"XFCE"_s, u"text"_s}), textDrawn);
    EXPECT_EQ(labelFormFor({u"some-bar"_s, u"sway"_s, u"text"_s}), textDrawn);
    EXPECT_EQ(labelFormFor({u"waybar"_s, u"sway"_s, u"auto"_s}), textDrawn);
    EXPECT_EQ(labelFormFor({u"waybar"_s, u"sway"_s, u"nonsense"_s}), textDrawn);
}

} // namespace
} // namespace lumora
