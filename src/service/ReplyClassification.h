#pragma once

#include "platform/HttpTransport.h"
#include "service/LumoError.h"

namespace lumora {

/// What an exchange amounts to: the body of a success (status 200 to 299), or the error that the
/// status and body, or the transport's failure, stand for.
[[nodiscard]] tl::expected<QByteArray, LumoError> classifyOutcome(const HttpOutcome& outcome);

/// The server's message in an error body: the string member "error" of a JSON object, even when it
/// is empty, cut at `longestPassage`; of several the last. Absent for anything else.
[[nodiscard]] std::optional<QString> errorMessage(const QByteArray& body);

} // namespace lumora
