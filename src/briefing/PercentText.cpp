#include "briefing/PercentText.h"

#include <cmath>

namespace lumora {

QString percentText(double fraction) {
    return roundedText(fraction * 100) + u'%';
}

QString roundedText(double value) {
    // Adding zero turns a negative zero into a plain one.
    return QString::number(std::round(value) + 0.0, 'f', 0);
}

} // namespace lumora
