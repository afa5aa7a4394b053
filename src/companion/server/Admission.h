#pragma once

#include "companion/server/HttpAnswer.h"
#include "companion/server/HttpRequest.h"
#include "companion/server/ServiceAction.h"

#include <variant>

namespace lumora::companion {

/// Somebody may have the briefing.
struct BriefingWanted {
    bool headOnly = false;

    bool operator==(const BriefingWanted&) const = default;
};

/// Somebody has opened the service's address, and is told what it is. Needs no token.
struct GreetingWanted {
    bool headOnly = false;

    bool operator==(const GreetingWanted&) const = default;
};

/// What comes of a request: a refusal, the greeting, the briefing, or something to do first.
using Admission = std::variant<HttpAnswer, GreetingWanted, BriefingWanted, ServiceAction>;

/// Judges a request. Whoever does not ask for this very computer by a name of it, or comes from a
/// page in a browser, is refused before anything else: no web page can use this service, whatever
/// names it makes up. Then come the path, the method and the token. Who has a browser open the
/// address itself, without a page that leads there, is greeted.
[[nodiscard]] Admission admit(const HttpRequest& request, QByteArrayView token);

/// Whether two texts are equal, in a time that tells nothing of where they differ.
[[nodiscard]] bool areEqualInConstantTime(QByteArrayView given, QByteArrayView wanted);

} // namespace lumora::companion
