// Whatever stands in the settings manager's property: what is asked of the program's looks can be
// drawn.

#include "Expectations.h"
#include "Targets.h"
#include "linux/appearance/FontDescription.h"
#include "linux/appearance/XSettings.h"

namespace lumora::fuzz {

namespace {

void expectFont(const std::optional<DesktopFont>& font) {
    if (!font)
        return;
    expect(!font->family.trimmed().isEmpty(), "a family");
    expect(font->pointSize > 0 && font->pointSize <= 200, "a size");
    expect(font->weight >= 100 && font->weight <= 900, "a weight");
}

} // namespace

void xsettings(QByteArrayView input) {
    const XSettings settings = parseXSettings(input.toByteArray());
    qsizetype size = 0;
    for (const QByteArray& text : settings.texts)
        size += text.size();
    expect(size <= input.size(), "no more texts than there are bytes");
    const auto wishes = wishesIn(settings);
    expectFont(wishes.font);
    expect(
        wishes.colorScheme != DesktopAppearance::Preference::Light, "no theme to be called light");
    expectFont(parseFontDescription(QString::fromUtf8(input)));
}

} // namespace lumora::fuzz
