#include "linux/autostart/ExecLine.h"

#include <gtest/gtest.h>

using namespace lumora;
using namespace Qt::Literals::StringLiterals;

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
          u"/tab\there"_s, u"/line\nend"_s, u"/~a;b&c|d*e?f#g(h)i<j>k"_s, u"/ä/日本/lumora"_s}) {
        EXPECT_EQ(programOf(execLineFor(path)), path);
        EXPECT_EQ(programOf(unescapeEntryValue(escapeEntryValue(execLineFor(path)))), path);
        EXPECT_FALSE(escapeEntryValue(execLineFor(path)).contains(u'\n'));
    }
}

TEST(ExecLine, TheProgramIsTheFirstArgument) {
    EXPECT_EQ(programOf(u"lumora"_s), u"lumora"_s);
    EXPECT_EQ(programOf(u"  lumora --demo %U"_s), u"lumora"_s);
    EXPECT_EQ(programOf(u"\"/my programs/lumora\" --demo"_s), u"/my programs/lumora"_s);
    EXPECT_EQ(programOf({}), QString());
    EXPECT_EQ(programOf(u"\"/never closed"_s), QString());
}

TEST(ExecLine, EscapesKeepAValueOnOneLine) {
    EXPECT_EQ(escapeEntryValue(u" a\tb\nc\rd\\e "_s), u"\\sa\\tb\\nc\\rd\\\\e "_s);
    EXPECT_EQ(unescapeEntryValue(u"\\sa\\tb\\nc\\rd\\\\e"_s), u" a\tb\nc\rd\\e"_s);
    EXPECT_EQ(unescapeEntryValue(u"\\q\\"_s), u"\\q\\"_s);
}
