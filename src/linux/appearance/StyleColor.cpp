#include "linux/appearance/StyleColor.h"

#include <QColor>
#include <QRegularExpression>
#include <QString>
#include <QStringList>

#include <algorithm>
#include <array>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

constexpr int darkest = 0;
constexpr int lightest = 255;
constexpr int middle = 128;

/// How bright people see the colour, 0 to 255.
int brightness(const QColor& color) {
    return (299 * color.red() + 587 * color.green() + 114 * color.blue()) / 1000;
}

int brightnessOfRole(const QString& role, bool windowsAreDark) {
    constexpr std::array grounds{"window"_L1, "base"_L1, "button"_L1, "light"_L1, "midlight"_L1};
    const bool isGround = std::ranges::find(grounds, role) != grounds.end();
    return isGround == windowsAreDark ? darkest : lightest;
}

/// One of "rgb(1, 2, 3)" and "hsv(1, 2, 3)", with or without a fourth part for opacity.
QColor colorFromParts(QStringView model, const QString& parts) {
    const QStringList numbers = parts.split(u',');
    if (numbers.size() < 3)
        return {};
    const auto part = [&](int index) { return numbers[index].trimmed().toInt(); };
    return model.startsWith(u"rgb") ? QColor(part(0), part(1), part(2))
                                    : QColor::fromHsv(part(0), part(1), part(2));
}

} // namespace

bool isDark(int red, int green, int blue) {
    return brightness(QColor(red, green, blue)) < middle;
}

std::optional<bool> isDarkBackground(QStringView value, bool windowsAreDark) {
    static const QRegularExpression color(
        u"(rgba?|hsva?|palette)\\(([^()]*)\\)|(#[0-9a-f]{3,8})|(?<![\\w(/.])(black|white)\\b"_s,
        QRegularExpression::CaseInsensitiveOption);
    int sum = 0;
    int count = 0;
    auto matches = color.globalMatch(value.toString());
    while (matches.hasNext()) {
        const auto match = matches.next();
        const QString parts = match.captured(2);
        if (match.captured(1).toLower() == u"palette") {
            sum += brightnessOfRole(parts.trimmed().toLower(), windowsAreDark);
            ++count;
            continue;
        }
        const QColor found = match.hasCaptured(1)
                                 ? colorFromParts(match.captured(1).toLower(), parts)
                                 : QColor(match.captured(0));
        if (found.isValid()) {
            sum += brightness(found);
            ++count;
        }
    }
    return count == 0 ? std::nullopt : std::optional(sum / count < middle);
}

} // namespace lumora
