#pragma once

#include "briefing/Briefing.h"

#include <QByteArray>

#include <optional>

namespace lumora::fuzz {

/// A JSON text that means `briefing`, its members in another order than its own; absent when an
/// instant in it cannot be written in UTC with a year of four digits.
[[nodiscard]] std::optional<QByteArray> jsonOf(const Briefing& briefing);

} // namespace lumora::fuzz
