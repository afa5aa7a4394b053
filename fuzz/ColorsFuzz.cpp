// A code that is taken is six digits and reads the same when written anew; of the rest nothing is.

#include "Expectations.h"
#include "Input.h"
#include "Targets.h"
#include "briefing/CssColor.h"

#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace lumora::fuzz {

namespace {

/// A part as it is written, from 0 to 255.
int partOf(double component) {
    const double part = component * 255;
    expect(part >= 0 && part <= 255, "a part from 0 to 1");
    expect(std::abs(part - std::round(part)) < 1e-9, "a part of two digits");
    return int(std::round(part));
}

QString codeOf(int red, int green, int blue) {
    return u"%1%2%3"_s.arg(red, 2, 16, QChar(u'0'))
        .arg(green, 2, 16, QChar(u'0'))
        .arg(blue, 2, 16, QChar(u'0'));
}

} // namespace

void colors(QByteArrayView input) {
    const QString text = QString::fromUtf8(input);
    if (const auto color = parseCssColor(text)) {
        const QString code = codeOf(partOf(color->red), partOf(color->green), partOf(color->blue));
        expect(parseCssColor(code) == color, "the same colour from its code");
        // Five digits may have a sign before them.
        const QString plain =
            text.toLower().remove(u' ').remove(u'\t').remove(u'#').replace(u'+', u'0');
        expect(plain == code, "the colour that is written");
    }

    Input parts(input);
    const int red = parts.below(256);
    const int green = parts.below(256);
    const int blue = parts.below(256);
    const auto made = parseCssColor(u"\t#"_s + codeOf(red, green, blue).toUpper() + u' ');
    expect(made.has_value(), "every code to be taken");
    expect(
        partOf(made->red) == red && partOf(made->green) == green && partOf(made->blue) == blue,
        "the parts that were written");
}

} // namespace lumora::fuzz
