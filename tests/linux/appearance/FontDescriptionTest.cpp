#include "linux/appearance/FontDescription.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace lumora::tests {
namespace {

struct Case {
    QString description;
    DesktopFont font;
};

TEST(FontDescription, NamesFamilyStyleAndSize) {
    const Case cases[] = {
        {u"Inter 10"_s, {u"Inter"_s, 10, 400, false}},
        {u"Noto Sans 10.5"_s, {u"Noto Sans"_s, 10.5, 400, false}},
        {u"Noto Sans Semi-Bold Italic 9"_s, {u"Noto Sans"_s, 9, 600, true}},
        {u"Ubuntu Medium 11"_s, {u"Ubuntu"_s, 11, 500, false}},
        {u"Cantarell Regular 11"_s, {u"Cantarell"_s, 11, 400, false}},
        {u"DejaVu Sans Bold Oblique 12"_s, {u"DejaVu Sans"_s, 12, 700, true}},
        {u"Black 12"_s, {u"Black"_s, 12, 400, false}},
        {u"Lato, Sans 10"_s, {u"Lato"_s, 10, 400, false}},
        {u"  Inter   10 "_s, {u"Inter"_s, 10, 400, false}},
    };
    for (const auto& [description, font] : cases)
        EXPECT_EQ(parseFontDescription(description), font) << description.toStdString();
}

TEST(FontDescription, NeedsAFamilyAndASizeInPoints) {
    for (const auto& description :
         {u""_s, u"Inter"_s, u"10"_s, u"Inter 0"_s, u"Inter -3"_s, u"Inter 12px"_s, u"Inter nan"_s,
          u"Inter 4000"_s, u", 10"_s})
        EXPECT_EQ(parseFontDescription(description), std::nullopt) << description.toStdString();
}

} // namespace
} // namespace lumora::tests
