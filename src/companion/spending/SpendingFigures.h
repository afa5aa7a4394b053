#pragma once

#include "companion/parts/Parts.h"
#include "companion/settings/ServiceSettings.h"
#include "companion/spending/Balances.h"

namespace lumora::companion {

/// The balances of both months, up to the same day.
struct SpentInMonths {
    std::vector<Balance> thisMonth;
    std::vector<Balance> lastMonth;
};

/// The figures of the month. Amounts in another currency than the configured one are left out; with
/// none configured there may be one only. The error is one line for people.
[[nodiscard]] tl::expected<SpendingPart, QString> spendingFigures(
    const SpentInMonths& spent, const JournalSettings& settings, QDate today, double stamp);

} // namespace lumora::companion
