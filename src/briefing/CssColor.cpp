#include "briefing/CssColor.h"

#include "briefing/Blanks.h"

#include <QString>

#include <algorithm>

namespace lumora {

namespace {

constexpr qsizetype digitCount = 6;

bool isHexDigit(QChar c) {
    return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F');
}

} // namespace

std::optional<CssColor> parseCssColor(QStringView text) {
    QStringView code = withoutBlanks(text);
    if (code.startsWith(u'#'))
        code = code.sliced(1);
    if (code.size() != digitCount)
        return std::nullopt;
    // A sign before five digits is tolerated, as number readers do.
    const QStringView digits = code.startsWith(u'+') ? code.sliced(1) : code;
    if (!std::all_of(digits.begin(), digits.end(), isHexDigit))
        return std::nullopt;
    const uint value = digits.toUInt(nullptr, 16);
    const auto component = [value](int shift) { return double((value >> shift) & 0xFF) / 255.0; };
    return CssColor{component(16), component(8), component(0)};
}

} // namespace lumora
