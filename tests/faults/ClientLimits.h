#pragma once

#include "linux/http/HttpLimits.h"

namespace lumora::tests {

/// How patient the clients are that the faults are tried on.
struct ClientLimits {
    /// As everybody's.
    static constexpr HttpLimits usual{};

    /// For services that would keep everybody waiting: time as in a dream, a thirtieth of it.
    static constexpr HttpLimits hurried{
        .inactivity = usual.inactivity / 30,
        .total = usual.total / 30,
    };
};

} // namespace lumora::tests
