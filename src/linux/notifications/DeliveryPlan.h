#pragma once

#include "platform/NotificationCenter.h"

#include <optional>
#include <vector>

namespace lumora {

/// How late a notification may come, because the machine slept or nobody was there to show it: a
/// meeting that it reminds of has only just begun then.
inline constexpr std::chrono::minutes longestDeliveryDelay{10};

/// Whether what was to be shown at `fireTime` is no longer worth showing at `now`.
bool isTooLate(Instant fireTime, Instant now);

/// What becomes of pending notifications at one moment.
struct DeliveryPlan {
    std::vector<NotificationRequest> due;     ///< to be shown now, the earliest first
    std::vector<NotificationRequest> waiting; ///< whose time is yet to come, in the given order
    std::optional<Instant> nextTime; ///< when the first of `waiting` is due; absent: none waits

    bool operator==(const DeliveryPlan&) const = default;
};

/// Plans for `now`. A request is due once its time has come; one that is too late by then is in
/// neither list, so that waking from a long sleep brings no burst of what was missed.
DeliveryPlan planDelivery(const std::vector<NotificationRequest>& pending, Instant now);

} // namespace lumora
