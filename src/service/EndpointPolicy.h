#pragma once

#include "service/LumoError.h"

#include <QUrl>

#include <tl/expected.hpp>

namespace lumora {

/// The address that an endpoint text means: the text without its surrounding white space, parsed
/// strictly. Nothing is added to it. invalidURL when nothing is left or it does not parse.
[[nodiscard]] tl::expected<QUrl, LumoError> parseEndpoint(const QString& endpoint);

/// The endpoint text that actions go to: `endpoint` without its surrounding white space, then
/// without the slashes at either end, plus "/action". A query or fragment stays where it is.
QString actionEndpoint(const QString& endpoint);

/// Whether the token may be sent to `url`: over TLS, or to this very computer. Refused with a
/// sentence that says so otherwise.
[[nodiscard]] tl::expected<void, LumoError> checkTokenMayGoTo(const QUrl& url);

} // namespace lumora
