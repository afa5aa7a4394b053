#include "linux/preferences/IniDocument.h"

#include <gtest/gtest.h>

using namespace lumora;
using namespace Qt::Literals::StringLiterals;

namespace {

std::optional<QString> read(const QByteArray& bytes, const QString& key = u"key"_s) {
    const auto document = IniDocument::parse(bytes);
    return document ? document->value(key) : std::nullopt;
}

QByteArray written(const QByteArray& bytes, const QString& key, const QString& text) {
    auto document = IniDocument::parse(bytes);
    document->setValue(key, text);
    return document->bytes();
}

struct ReadCase {
    const char* name;
    QByteArray bytes;
    std::optional<QString> value; ///< of the key "key"
};

struct WriteCase {
    const char* name;
    QByteArray before;
    QByteArray after; ///< with "key" set to "new"
};

class IniReading : public testing::TestWithParam<ReadCase> {};

class IniWriting : public testing::TestWithParam<WriteCase> {};

class IniCorruption : public testing::TestWithParam<QByteArray> {};

class IniRoundTrip : public testing::TestWithParam<QString> {};

} // namespace

TEST_P(IniReading, Reads) {
    EXPECT_EQ(read(GetParam().bytes), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(
    All, IniReading,
    testing::Values(
        ReadCase{"Empty", "", std::nullopt}, ReadCase{"Plain", "[General]\nkey=text\n", u"text"_s},
        ReadCase{"NoLastLineBreak", "[General]\nkey=text", u"text"_s},
        ReadCase{"BeforeAnyHeader", "key=text\n[Other]\nx=y\n", u"text"_s},
        ReadCase{"InAnotherGroup", "[Other]\nkey=text\n", std::nullopt},
        ReadCase{"AfterAnotherGroup", "[Other]\nkey=no\n[General]\nkey=text\n", u"text"_s},
        ReadCase{"LastOfTwo", "[General]\nkey=a\nkey=b\n", u"b"_s},
        ReadCase{"EmptyValue", "[General]\nkey=\n", u""_s},
        ReadCase{"BlanksAround", "[General]\n  key =  two words \n", u"two words"_s},
        ReadCase{"WindowsLineBreaks", "[General]\r\nkey=text\r\n", u"text"_s},
        ReadCase{"ByteOrderMark", "\xEF\xBB\xBF[General]\nkey=text\n", u"text"_s},
        ReadCase{"Comments", "# a\n; b\n\n[General]\n#key=no\n;key=no\nkey=text\n", u"text"_s},
        ReadCase{"NoListsAndNoComments", "[General]\nkey=a,b;c#d\n", u"a,b;c#d"_s},
        ReadCase{"EqualsSigns", "[General]\nkey=https://h/?a=1&b=2\n", u"https://h/?a=1&b=2"_s},
        ReadCase{"Quoted", "[General]\nkey=\"https://h/?a=1,2\"\n", u"https://h/?a=1,2"_s},
        ReadCase{"QuotedWithEscapes", "[General]\nkey=\"a\\\"b\\\\c\"\n", u"a\"b\\c"_s},
        ReadCase{"OneQuoteOnly", "[General]\nkey=\"\n", u"\""_s},
        ReadCase{"HexadecimalEscape", "[General]\nkey=\\xe4\\x20ac!\n", u"\u00E4\u20AC!"_s},
        ReadCase{"UnknownEscape", "[General]\nkey=C:\\dir\\\n", u"C:\\dir\\"_s},
        ReadCase{"NotAscii", "[General]\nkey=gr\xC3\xBC\xC3\x9F\n", u"gr\u00FC\u00DF"_s}),
    [](const auto& tested) { return tested.param.name; });

TEST(IniReading, KnowsDottedKeysAsTheyAre) {
    EXPECT_EQ(
        read("[General]\nsection.collapsed.events=true\n", u"section.collapsed.events"_s),
        u"true"_s);
}

TEST(IniReading, AnEmptyKeyIsNeverSet) {
    EXPECT_EQ(read("[General]\nkey=text\n", u""_s), std::nullopt);
}

TEST_P(IniCorruption, IsNoDocument) {
    EXPECT_FALSE(IniDocument::parse(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(
    All, IniCorruption,
    testing::Values(
        "[General]\nno assignment\n", "[General\nkey=text\n", "=text\n",
        "[General]\nkey=\xFF\xFE\n", QByteArray("[General]\nkey=a\0b\n", 18), "{\"key\": 1}\n"));

TEST_P(IniWriting, TouchesTheOneKeyOnly) {
    EXPECT_EQ(written(GetParam().before, u"key"_s, u"new"_s), GetParam().after);
}

INSTANTIATE_TEST_SUITE_P(
    All, IniWriting,
    testing::Values(
        WriteCase{"Empty", "", "[General]\nkey=new\n"},
        WriteCase{"Replaced", "[General]\na=1\nkey=old\nb=2\n", "[General]\na=1\nkey=new\nb=2\n"},
        WriteCase{"LastOfTwo", "[General]\nkey=a\nkey=b\n", "[General]\nkey=a\nkey=new\n"},
        WriteCase{"Appended", "[General]\na=1\n", "[General]\na=1\nkey=new\n"},
        WriteCase{"BareHeader", "[General]\n", "[General]\nkey=new\n"},
        WriteCase{"NoLastLineBreak", "[General]\na=1", "[General]\na=1\nkey=new\n"},
        WriteCase{"LastLineReplaced", "[General]\nkey=old", "[General]\nkey=new\n"},
        WriteCase{
            "BeforeTheNextGroup", "[General]\na=1\n\n# of b\n[B]\nkey=1\n",
            "[General]\na=1\nkey=new\n\n# of b\n[B]\nkey=1\n"},
        WriteCase{"OtherGroupsOnly", "# c\n[B]\nkey=1", "# c\n[B]\nkey=1\n[General]\nkey=new\n"},
        WriteCase{"BeforeAnyHeader", "a=1\n[B]\nx=1\n", "a=1\nkey=new\n[B]\nx=1\n"},
        WriteCase{"CommentsOnly", "# mine\n", "# mine\n[General]\nkey=new\n"},
        WriteCase{"WindowsLineBreaks", "[General]\r\na=1\r\n", "[General]\r\na=1\r\nkey=new\r\n"},
        WriteCase{
            "ByteOrderMark", "\xEF\xBB\xBF[General]\nkey=old\n",
            "\xEF\xBB\xBF[General]\nkey=new\n"}),
    [](const auto& tested) { return tested.param.name; });

TEST_P(IniRoundTrip, ReadsWhatItWrote) {
    const QByteArray bytes = written("[General]\nother=kept\n", u"key"_s, GetParam());
    EXPECT_EQ(bytes.count('\n'), 3);
    EXPECT_EQ(read(bytes), GetParam());
    EXPECT_EQ(read(bytes, u"other"_s), u"kept"_s);
}

INSTANTIATE_TEST_SUITE_P(
    All, IniRoundTrip,
    testing::Values(
        u""_s, u" "_s, u"  both ends "_s, u"\""_s, u"\"quoted\""_s, u"say \"x\""_s, u"\"a\" b"_s,
        u"a\\b\\n\\x41\\"_s, u"line\nbreak\r\n\ttab"_s, u"[General]"_s, u"# no comment"_s,
        u"a=b;c,d"_s, u"\U0001F600 \u0627\u0644"_s, QString(3, QChar(u'\0')),
        u"\u0001f\u001b1\u0085"_s, u"\u00A0wide\u3000"_s));
