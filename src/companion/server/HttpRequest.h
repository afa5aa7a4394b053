#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>

#include <optional>
#include <utility>
#include <variant>

namespace lumora::companion {

/// The largest head and body of a request that are taken, in bytes.
inline constexpr qsizetype largestHead = qsizetype{16} * 1024;
inline constexpr qsizetype largestBody = qsizetype{64} * 1024;

/// One request as it came over the wire.
struct HttpRequest {
    QByteArray method;
    QByteArray target;                                ///< as it stands in the first line
    QList<std::pair<QByteArray, QByteArray>> headers; ///< names in lower case
    QByteArray body;

    /// The value of a header; absent when it is not there.
    [[nodiscard]] std::optional<QByteArray> header(QByteArrayView name) const;

    bool operator==(const HttpRequest&) const = default;
};

/// There is more to come.
struct RequestUnfinished {
    bool operator==(const RequestUnfinished&) const = default;
};

/// That is no request that this service takes; the status says why.
struct RequestRefused {
    int status = 400;

    bool operator==(const RequestRefused&) const = default;
};

using RequestReading = std::variant<HttpRequest, RequestUnfinished, RequestRefused>;

/// Reads a request from the bytes that have come so far. Strict: whatever two programs might read
/// differently, such as a folded line, a length that stands twice or a transfer coding, is refused.
/// Never unfinished once more than the largest head and body are there.
[[nodiscard]] RequestReading readRequest(QByteArrayView bytes);

} // namespace lumora::companion
