#pragma once

#include <QtGlobal>

#include <chrono>

namespace lumora {

/// How long an exchange may take and how much may come back.
struct HttpLimits {
    std::chrono::milliseconds inactivity{15'000}; ///< without a byte in either direction
    std::chrono::milliseconds total{30'000};      ///< for the whole exchange, redirects included
    qint64 headBytes = qint64{32} * 1024;         ///< of an answer's head, interim answers included
    qint64 bodyBytes = qint64{16} * 1024 * 1024;  ///< of an answer's body
    /// Of all that comes over one connection, TLS and the framing of chunks included: what is
    /// neither head nor body can be without end as well.
    qint64 receivedBytes = qint64{40} * 1024 * 1024;
};

} // namespace lumora
