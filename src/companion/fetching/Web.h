#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QUrl>

#include <tl/expected.hpp>

#include <chrono>
#include <functional>
#include <optional>
#include <utility>

namespace lumora::companion {

/// What is asked of a server.
struct WebRequest {
    QUrl url; ///< as the user wrote it; see fetchableUrl()
    /// Beside those that every request has. A value with a line break in it is refused.
    QList<std::pair<QByteArray, QByteArray>> headers;
    /// Absent: a GET. Otherwise a POST of this; its Content-Type stands in `headers`.
    std::optional<QByteArray> body;
    std::chrono::milliseconds longest{20'000}; ///< for all of it, redirects included
    qint64 largest = qint64{10} * 1024 * 1024; ///< of the body, unpacked
};

/// What a server answered, whatever its status.
struct WebAnswer {
    int status = 0;
    QByteArray body;
    QByteArray etag;         ///< empty: none
    QByteArray lastModified; ///< empty: none
};

/// An answer, or why there is none, in words for people that hold no address.
using WebOutcome = tl::expected<WebAnswer, QString>;

/// Asks servers. Lives in the thread that it was made in.
class Web {
public:
    virtual ~Web() = default;

    /// Sends `request`. `done` is called once, from the event loop of this thread and never from
    /// within the call; not if this object is gone before.
    virtual void send(WebRequest request, std::function<void(WebOutcome)> done) = 0;
};

/// `url` as it is fetched: webcal means https. Absent when it may not be: only https addresses,
/// and http ones of this very computer, are.
[[nodiscard]] std::optional<QUrl> fetchableUrl(QUrl url);

} // namespace lumora::companion
