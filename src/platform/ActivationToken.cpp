#include "platform/ActivationToken.h"

namespace lumora {

namespace {

constexpr char tokenVariable[] = "XDG_ACTIVATION_TOKEN";
constexpr char olderTokenVariable[] = "DESKTOP_STARTUP_ID"; // of X11

} // namespace

QByteArray inheritedActivationToken() {
    const QByteArray token = qgetenv(tokenVariable);
    return token.isEmpty() ? qgetenv(olderTokenVariable) : token;
}

ActivationTokenScope::ActivationTokenScope(const QByteArray& token) {
    if (!token.isEmpty())
        qputenv(tokenVariable, token);
}

ActivationTokenScope::~ActivationTokenScope() {
    qunsetenv(tokenVariable);
}

} // namespace lumora
