#include "linux/time/TickPlan.h"

#include <algorithm>

namespace lumora {

TickPlan planTick(Instant deadline, std::chrono::seconds interval, Instant now) {
    if (now < deadline)
        return {false, std::min(deadline, now + interval)};
    const auto passed = (now - deadline) / interval;
    return {true, deadline + (passed + 1) * interval};
}

} // namespace lumora
