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

TEST(DesktopEntry, EscapesKeepAValueOnOneLine) {
    DesktopEntry entry;
    entry.setValue(u"Key"_s, u" a\tb\nc\rd\\e "_s);
    EXPECT_EQ(entry.bytes(), "[Desktop Entry]\nKey=\\sa\\tb\\nc\\rd\\\\e \n");
    const DesktopEntry read = parsed("[Desktop Entry]\nKey=\\sa\\tb\\nc\\rd\\\\e\nOdd=\\q\\\n");
    EXPECT_EQ(read.value(u"Key"_s), u" a\tb\nc\rd\\e"_s);
    EXPECT_EQ(read.value(u"Odd"_s), u"\\q\\"_s);
}

TEST(ExecLine, APlainPathStandsAsItIs) {
    EXPECT_EQ(execLineFor(u"/usr/bin/lumora"_s), u"/usr/bin/lumora"_s);
    EXPECT_EQ(execLineFor(u"/home/jörg/bin/lumora-1.0_x"_s), u"/home/jörg/bin/lumora-1.0_x"_s);
}

TEST(ExecLine, QuotesWhatIsReserved) {
    EXPECT_EQ(execLineFor(u"/my programs/lumora"_s), u"\"/my programs/lumora\""_s);
    EXPECT_EQ(execLineFor(u"/a'b/lumora"_s), u"\"/a'b/lumora\""_s);
    EXPECT_EQ(execLineFor(u"/a\"b`c$d\\e"_s), u"\"/a\\\"b\\`c\\$d\\\\e\""_s);
    EXPECT_EQ(execLineFor(u"/100%/lumora"_s), u"/100%%/lumora"_s);
}

TEST(ExecLine, ReadsBackEveryPathItWrites) {
    for (const QString& path :
         {u"/usr/bin/lumora"_s, u"/my programs/lumora"_s, u"/a\"b`c$d\\e f"_s, u"/100%/%f"_s,
          u"/tab\there"_s, u"/line\nend"_s, u"/~a;b&c|d*e?f#g(h)i<j>k"_s, u"/ä/日本/lumora"_s,
          u"/blanks\u00a0"_s, u"/blanks\u3000"_s, u"/blanks\v"_s}) {
        EXPECT_EQ(programOf(execLineFor(path)), path);
        DesktopEntry entry;
        entry.setValue(u"Exec"_s, execLineFor(path));
        const auto read = parsed(entry.bytes()).value(u"Exec"_s);
        EXPECT_EQ(programOf(read.value_or(QString())), path);
        EXPECT_EQ(entry.bytes().count('\n'), 2);
    }
}

TEST(ExecLine, TheProgramIsTheFirstArgument) {
    EXPECT_EQ(programOf(u"lumora"_s), u"lumora"_s);
    EXPECT_EQ(programOf(u"  lumora --demo %U"_s), u"lumora"_s);
    EXPECT_EQ(programOf(u"\"/my programs/lumora\" --demo"_s), u"/my programs/lumora"_s);
    EXPECT_EQ(programOf({}), QString());
    EXPECT_EQ(programOf(u"\"/never closed"_s), QString());
}
