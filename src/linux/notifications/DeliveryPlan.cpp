#include "linux/notifications/DeliveryPlan.h"

#include <algorithm>

namespace lumora {

bool isTooLate(Instant fireTime, Instant now) {
    return now - fireTime > longestDeliveryDelay;
}

DeliveryPlan planDelivery(const std::vector<NotificationRequest>& pending, Instant now) {
    DeliveryPlan plan;
    for (const NotificationRequest& request : pending) {
        if (request.fireTime > now)
            plan.waiting.push_back(request);
        else if (!isTooLate(request.fireTime, now))
            plan.due.push_back(request);
    }
    std::ranges::stable_sort(plan.due, {}, &NotificationRequest::fireTime);
    if (!plan.waiting.empty())
        plan.nextTime =
            std::ranges::min_element(plan.waiting, {}, &NotificationRequest::fireTime)->fireTime;
    return plan;
}

} // namespace lumora
