#include "doctor/Links.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora {

Finding tokenLink(const Evidence& evidence) {
    const QString link = u"token"_s;
    const QString noAnswer = u"Restart your keyring, or log in again"_s;
    if (!evidence.token)
        return Finding::failed(link, u"The keyring does not answer in time"_s, noAnswer);
    const TokenEvidence& token = *evidence.token;
    const QString keyring = token.keeper.isEmpty() ? u"the keyring"_s : token.keeper;
    switch (token.status) {
    case SecretLookup::Status::Found:
        if (!token.isEmpty)
            return Finding::ok(link, u"It is in "_s + keyring);
        [[fallthrough]];
    case SecretLookup::Status::Absent:
        return Finding::failed(
            link, u"There is none in "_s + keyring, u"Save the token in Lumora's settings"_s);
    case SecretLookup::Status::Locked:
        return Finding::failed(
            link, keyring + u" is locked"_s,
            u"Unlock it, with your password manager or by logging in with your password"_s);
    case SecretLookup::Status::Unavailable:
        break;
    }
    if (evidence.session && !evidence.session->hasBus)
        return Finding::failed(
            link, u"There is no session bus, and so no keyring"_s,
            u"Start the session with \"dbus-run-session\", or set DBUS_SESSION_BUS_ADDRESS"_s);
    return Finding::failed(
        link, token.reason.isEmpty() ? u"There is no keyring"_s : token.reason,
        u"Install and start a keyring, such as gnome-keyring, KWallet or KeePassXC"_s);
}

} // namespace lumora
