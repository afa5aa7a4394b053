// Whatever a bar's theme says of its background, it is dark, light, or nothing is known; and a
// colour that is written plainly is the one that is seen.

#include "Expectations.h"
#include "Input.h"
#include "Targets.h"
#include "linux/appearance/StyleColor.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora::fuzz {

void styles(QByteArrayView input) {
    const QString text = QString::fromUtf8(input);
    const auto ofDarkWindows = isDarkBackground(text, true);
    const auto ofLightWindows = isDarkBackground(text, false);
    expect(
        ofDarkWindows.has_value() == ofLightWindows.has_value(),
        "a colour whatever the windows have");
    const bool dependsOnWindows = text.contains(u"palette"_s, Qt::CaseInsensitive);
    expect(dependsOnWindows || ofDarkWindows == ofLightWindows, "only roles to follow the windows");

    Input parts(input);
    const int red = parts.below(256);
    const int green = parts.below(256);
    const int blue = parts.below(256);
    const std::optional<bool> seen = isDark(red, green, blue);
    const QString numbers = u"%1, %2,%3"_s.arg(red).arg(green).arg(blue);
    const QString code = u"#%1"_s.arg(red << 16 | green << 8 | blue, 6, 16, QChar(u'0'));
    for (const QString& written :
         {u"rgb("_s + numbers + u')', u" RGBA("_s + numbers + u", 80%) "_s, code})
        expect(isDarkBackground(written, parts.flag()) == seen, "the colour as written");
}

} // namespace lumora::fuzz
