#pragma once

#include <QtGlobal>

#include <chrono>

namespace lumora {

/// How long an exchange may take and how much may come back.
struct HttpLimits {
    std::chrono::milliseconds inactivity{15'000}; ///< without a byte in either direction
    std::chrono::milliseconds total{30'000};      ///< for the whole exchange, redirects included
    qint64 bodyBytes = qint64{16} * 1024 * 1024;  ///< of a body, decompressed
};

} // namespace lumora
