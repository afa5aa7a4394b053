#include "linux/autostart/DesktopEntry.h"

#include <gtest/gtest.h>

using namespace lumora;
using namespace Qt::Literals::StringLiterals;

namespace {

DesktopEntry parsed(const QByteArray& bytes) {
    const auto entry = DesktopEntry::parse(bytes);
    EXPECT_TRUE(entry.has_value());
    return entry.value_or(DesktopEntry());
}

} // namespace

TEST(DesktopEntry, BeginsWithItsGroup) {
    DesktopEntry entry;
    EXPECT_EQ(entry.bytes(), "[Desktop Entry]\n");
    entry.setValue(u"Name"_s, u"Lumora"_s);
    entry.setValue(u"Exec"_s, u"a\\b"_s);
    EXPECT_EQ(entry.bytes(), "[Desktop Entry]\nName=Lumora\nExec=a\\\\b\n");
    EXPECT_EQ(entry.value(u"Exec"_s), u"a\\b"_s);
}

TEST(DesktopEntry, ReadsOnlyItsOwnGroup) {
    const DesktopEntry entry =
        parsed("# a comment\n\n[Desktop Entry]\nName = Lumora \nName[de]=Anders\n#Exec=no\n"
               "\n[Desktop Action quit]\nExec=lumora quit\n");
    EXPECT_EQ(entry.value(u"Name"_s), u"Lumora"_s);
    EXPECT_EQ(entry.value(u"Name[de]"_s), u"Anders"_s);
    EXPECT_EQ(entry.value(u"Exec"_s), std::nullopt);
}

TEST(DesktopEntry, WithoutItsGroupItIsNone) {
    EXPECT_FALSE(DesktopEntry::parse({}));
    EXPECT_FALSE(DesktopEntry::parse("Exec=lumora\n"));
    EXPECT_FALSE(DesktopEntry::parse("[Other]\nExec=lumora\n"));
}

TEST(DesktopEntry, AChangeLeavesTheRestAlone) {
    const QByteArray before =
        "# mine\n[Desktop Entry]\nHidden=true\nName[de]=L\\sx\nX-Other=1\n# end\n\n"
        "[Desktop Action a]\nHidden=true\n";
    DesktopEntry entry = parsed(before);
    EXPECT_EQ(entry.bytes(), before);
    entry.setValue(u"Hidden"_s, u"false"_s);
    entry.setValue(u"Exec"_s, u"lumora"_s);
    EXPECT_EQ(
        entry.bytes(),
        "# mine\n[Desktop Entry]\nHidden=false\nName[de]=L\\sx\nX-Other=1\n# end\nExec=lumora\n\n"
        "[Desktop Action a]\nHidden=true\n");
    entry.remove(u"Hidden"_s);
    entry.setValue(u"Icon"_s, u"i"_s);
    EXPECT_EQ(
        entry.bytes(),
        "# mine\n[Desktop Entry]\nName[de]=L\\sx\nX-Other=1\n# end\nExec=lumora\nIcon=i\n\n"
        "[Desktop Action a]\nHidden=true\n");
}

TEST(DesktopEntry, TheLastOfTwoHoldsAndBothGo) {
    DesktopEntry entry = parsed("[Desktop Entry]\nHidden=true\nHidden=false\n");
    EXPECT_TRUE(entry.isFalse(u"Hidden"_s));
    entry.remove(u"Hidden"_s);
    EXPECT_EQ(entry.bytes(), "[Desktop Entry]\n");
}

TEST(DesktopEntry, TruthHasTwoSpellings) {
    const DesktopEntry entry = parsed("[Desktop Entry]\r\na=true\r\nb=1\nc=false\nd=0\ne=yes\n");
    EXPECT_TRUE(entry.isTrue(u"a"_s));
    EXPECT_TRUE(entry.isTrue(u"b"_s));
    EXPECT_TRUE(entry.isFalse(u"c"_s));
    EXPECT_TRUE(entry.isFalse(u"d"_s));
    for (const QString& key : {u"e"_s, u"f"_s}) {
        EXPECT_FALSE(entry.isTrue(key));
        EXPECT_FALSE(entry.isFalse(key));
    }
}
