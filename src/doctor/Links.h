#pragma once

#include "doctor/Evidence.h"
#include "doctor/Finding.h"

#include <vector>

namespace lumora {

// The links of the chain, each judged by itself. What is behind a broken one was not tried.

[[nodiscard]] Finding preferencesLink(const Evidence& evidence);
[[nodiscard]] Finding endpointLink(const Evidence& evidence);
[[nodiscard]] Finding tokenLink(const Evidence& evidence);
[[nodiscard]] Finding proxyLink(const Evidence& evidence);
[[nodiscard]] Finding nameLink(const Evidence& evidence);
[[nodiscard]] Finding connectionLink(const Evidence& evidence);
[[nodiscard]] Finding tlsLink(const Evidence& evidence);
[[nodiscard]] Finding answerLink(const Evidence& evidence);
[[nodiscard]] Finding briefingLink(const Evidence& evidence);
[[nodiscard]] Finding clockLink(const Evidence& evidence);
[[nodiscard]] Finding trayLink(const Evidence& evidence);
[[nodiscard]] Finding barLink(const Evidence& evidence);
[[nodiscard]] Finding notificationsLink(const Evidence& evidence);
[[nodiscard]] Finding wakeLink(const Evidence& evidence);
[[nodiscard]] Finding loginItemLink(const Evidence& evidence);
[[nodiscard]] Finding displayLink(const Evidence& evidence);

/// All of them, from the service to the screen.
[[nodiscard]] std::vector<Finding> allLinks(const Evidence& evidence);

} // namespace lumora
