#pragma once

#include "demo/DemoService.h"

#include <tl/expected.hpp>

#include <optional>

namespace lumora {

/// The request in the bytes that a connection of the demo service has brought so far; absent while
/// more are to come. The error is the HTTP status to refuse with: 400 for what is not HTTP/1, 411
/// for a body of unknown size, 413 and 431 for too much.
tl::expected<std::optional<DemoRequest>, int> demoRequestFrom(const QByteArray& received);

/// The answer to what is not understood.
DemoAnswer demoRefusal(int status);

/// The bytes of an answer, after which the connection is over. To a HEAD request it goes without
/// its body.
QByteArray demoResponse(const DemoAnswer& answer, bool withBody);

} // namespace lumora
