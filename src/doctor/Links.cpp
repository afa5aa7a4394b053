#include "doctor/Links.h"

namespace lumora {

std::vector<Finding> allLinks(const Evidence& evidence) {
    std::vector<Finding> findings;
    for (const auto link :
         {&preferencesLink, &endpointLink, &tokenLink, &proxyLink, &nameLink, &connectionLink,
          &tlsLink, &answerLink, &briefingLink, &clockLink, &trayLink, &barLink, &notificationsLink,
          &wakeLink, &loginItemLink, &displayLink})
        findings.push_back(link(evidence));
    return findings;
}

} // namespace lumora
