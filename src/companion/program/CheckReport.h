#pragma once

#include "companion/program/Sources.h"

namespace lumora::companion {

/// What `check` prints, and whether everything is in order.
struct CheckReport {
    QString text;
    bool isFine = true;
};

/// One line for each source: what it has for today, how old that is, and what is wrong. `Sources`
/// has asked for everything already.
[[nodiscard]] CheckReport checkReport(Sources& sources);

/// "3 minutes" for a span that people need not know to the second.
[[nodiscard]] QString ageText(std::chrono::seconds age);

} // namespace lumora::companion
