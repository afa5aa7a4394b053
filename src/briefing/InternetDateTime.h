#pragma once

#include "briefing/Instant.h"

#include <optional>
#include <string_view>

namespace lumora {

/// Reads an internet date-time: "2025-03-04T09:30:00Z", with any number of fraction digits after
/// the seconds (those beyond microseconds are cut) and a mandatory zone, 'Z' or "±hh:mm". The
/// letters are capitals, the date must exist, and there are no leap seconds. Absent for any other
/// text.
[[nodiscard]] std::optional<Instant> parseInternetDateTime(std::string_view text);

} // namespace lumora
