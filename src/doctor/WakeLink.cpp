#include "doctor/Links.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora {

Finding wakeLink(const Evidence& evidence) {
    const QString link = u"logind"_s;
    if (!evidence.wakeService.value_or(false))
        return Finding::warning(
            link, u"Nobody tells when the computer wakes"_s,
            u"Start systemd-logind or elogind; until then \"lumora refresh\" fetches at once"_s);
    return Finding::ok(link, u"It tells when the computer wakes"_s);
}

} // namespace lumora
