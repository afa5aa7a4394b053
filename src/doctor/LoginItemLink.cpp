#include "doctor/Links.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora {

Finding loginItemLink(const Evidence& evidence) {
    const QString link = u"login item"_s;
    if (!evidence.loginItem)
        return Finding::warning(
            link, u"The autostart entries are not read in time"_s,
            u"Look whether the disk or the network that your home is on hangs"_s);
    const auto& [status, place] = *evidence.loginItem;
    switch (status) {
    case LoginItemStatus::NotRegistered:
        return Finding::ok(link, u"Lumora does not start at login"_s);
    case LoginItemStatus::Enabled:
        return Finding::ok(link, place);
    case LoginItemStatus::RequiresApproval:
        return Finding::warning(
            link, place + u" is switched off by the desktop"_s,
            u"Switch \"Launch at login\" on in Lumora's settings"_s);
    case LoginItemStatus::NotFound:
        break;
    }
    return Finding::warning(
        link, place + u" starts a program that is not there"_s,
        u"Switch \"Launch at login\" off and on in Lumora's settings"_s);
}

} // namespace lumora
