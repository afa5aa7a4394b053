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

TEST(LongLines, AreMeasuredByTheirBeginning) {
    const Theme theme = plainTheme();
    for (const QString& unit : {u"word "_s, u"ประชุม"_s, u"क्षत्रिय "_s, u"اجتماع "_s, u"a\u0301"_s}) {
        const TextLine shorter{unit.repeated(300), {}};
        const TextLine longer{unit.repeated(3000), {}};
        EXPECT_EQ(textWidth(longer, theme), textWidth(shorter, theme));
        EXPECT_EQ(lineHeight(longer, theme).whole, lineHeight(shorter, theme).whole);
        EXPECT_EQ(elidedLine(longer, theme, 200), elidedLine(shorter, theme, 200));
        EXPECT_GT(textWidth(longer, theme), 320) << "a row has no room for more";
    }
}

TEST(LongLines, AreCutEvenWhereTheyTakeNoRoom) {
    const Theme theme = plainTheme();
    const TextLine line{u"a"_s + QString(1000, QChar(0x200d)), {}};
    EXPECT_TRUE(isCut(line, theme, 10'000));
    EXPECT_TRUE(elidedLine(line, theme, 10'000).text.endsWith(u'…'));
    EXPECT_LE(elidedLine(line, theme, 10'000).text.size(), 200);
}
