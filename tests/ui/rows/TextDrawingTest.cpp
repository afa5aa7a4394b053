#include "ui/rows/TextDrawing.h"

#include "support/ViewHarness.h"

#include <QFontInfo>
#include <QFontMetrics>

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

TEST(TextFonts, AreFollowedByTheFamilyOfPictures) {
    const QFont font = plainTheme().font(TextRole::Caption, QFont::DemiBold);
    const QFont named = withFamily(font, u"Some Pictures"_s);
    EXPECT_EQ(named.families(), (QStringList{QFontInfo(font).family(), u"Some Pictures"_s}));
    EXPECT_EQ(named.pointSizeF(), font.pointSizeF());
    EXPECT_EQ(named.weight(), font.weight());
}

TEST(TextFonts, NameTheFamilyInUseSoThatPicturesDoNotComeFirst) {
    QFont missing = plainTheme().font(TextRole::Body);
    missing.setFamilies({u"No Such Family"_s});
    const QString used = QFontInfo(missing).family();
    EXPECT_EQ(withFamily(missing, u"Some Pictures"_s).families().front(), used);
}

TEST(TextFonts, AreLeftAsTheyAreWherePicturesHaveNoFamily) {
    const QFont font = plainTheme().font(TextRole::Body);
    EXPECT_TRUE(withFamily(font, {}).isCopyOf(font));
}

TEST(TextFonts, TheFamilyOfPicturesHasThem) {
    const QString family = familyOfPictures();
    QFont font(u"emoji"_s);
    font.setStyleStrategy(QFont::NoFontMerging);
    EXPECT_EQ(!family.isEmpty(), QFontMetrics(font).inFontUcs4(U'🔥'));
    if (family.isEmpty())
        return;
    font.setFamilies({family});
    EXPECT_EQ(QFontInfo(font).family(), family);
    EXPECT_TRUE(QFontMetrics(font).inFontUcs4(U'🔥'));
}

TEST(TextFonts, APictureIsAsWideInAMarkAsInATitle) {
    const Theme theme = plainTheme();
    const auto widthOf = [&theme](const QString& text) { return textWidth({text, {}}, theme); };
    EXPECT_NEAR(widthOf(u"Run 🔥"_s), widthOf(u"Run "_s) + widthOf(u"🔥"_s), 1);
}
