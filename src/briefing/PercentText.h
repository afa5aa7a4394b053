#pragma once

#include <QString>

namespace lumora {

/// A fraction of 1 as a whole percentage ("43%" for 0.425): the nearest integer to
/// `fraction` × 100, halves away from zero, in plain decimal digits. Neither clamped nor localised.
QString percentText(double fraction);

/// `value` rounded to the nearest integer, halves away from zero, in plain decimal digits. A value
/// that rounds to zero has no sign.
QString roundedText(double value);

} // namespace lumora
