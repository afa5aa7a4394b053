#pragma once

#include "briefing/Instant.h"

#include <array>
#include <cstdio>
#include <string>

namespace lumora::fuzz {

/// "2025-03-04T09:30:00.000000", without a zone; the year must have four digits.
inline std::string instantText(Instant instant) {
    const auto day = std::chrono::floor<std::chrono::days>(instant);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss time(instant - day);
    std::array<char, 64> text;
    const int length = std::snprintf(
        text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02d.%06d", int(date.year()),
        unsigned(date.month()), unsigned(date.day()), int(time.hours().count()),
        int(time.minutes().count()), int(time.seconds().count()), int(time.subseconds().count()));
    return {text.data(), size_t(length)};
}

/// Whether the instant lies in a year with four digits.
inline bool hasOrdinaryYear(Instant instant) {
    using std::chrono::year;
    return instant >= std::chrono::sys_days(year(0) / 1 / 1) &&
           instant < std::chrono::sys_days(year(10'000) / 1 / 1);
}

} // namespace lumora::fuzz
