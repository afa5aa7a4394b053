#pragma once

#include "platform/HttpTransport.h"

namespace lumora {

/// How many redirects one exchange follows.
inline constexpr int maximumRedirects = 20;

/// The request that follows `sent` after an answer with `status` and the Location header
/// `location` (empty: none), when `hops` redirects were followed before. Absent when the answer
/// stands as it is: it is no redirect, leads to another scheme, host or port or to no address at
/// all, or is one too many.
///
/// A POST becomes a GET without a body after 301, 302 and 303, and stays as it is after 307 and
/// 308. Headers are carried over; they never leave the origin.
[[nodiscard]] std::optional<HttpRequest>
followRedirect(const HttpRequest& sent, int status, const QByteArray& location, int hops);

} // namespace lumora
