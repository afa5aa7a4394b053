#include "platform/UrlOpener.h"

#include <gtest/gtest.h>

using namespace lumora;
using namespace Qt::Literals::StringLiterals;

TEST(SafeLink, IsAnAddressOfAnotherPlace) {
    for (const QString& text :
         {u"https://meet.example/a"_s, u"HTTP://meet.example"_s, u"zoommtg://meet.example/a"_s,
          u"tel:+49301234"_s})
        EXPECT_EQ(safeLink(text), QUrl(text)) << text.toStdString();
}

TEST(SafeLink, ReadsNoFileAndRunsNoCode) {
    for (const QString& text :
         {u"file:///etc/passwd"_s, u"FILE:///etc/passwd"_s, u"javascript:alert(1)"_s,
          u"data:text/html,x"_s})
        EXPECT_EQ(safeLink(text), std::nullopt) << text.toStdString();
}

TEST(SafeLink, NeedsASchemeAndToParse) {
    for (const QString& text :
         {u""_s, u"meet.example/a"_s, u"https://[::1"_s, u"https://meet.example/a b"_s})
        EXPECT_EQ(safeLink(text), std::nullopt) << text.toStdString();
}
