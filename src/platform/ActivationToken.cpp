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

QProcessEnvironment withActivationToken(QProcessEnvironment environment, const QByteArray& token) {
    const QString variable = QString::fromLatin1(tokenVariable);
    if (token.isEmpty())
        environment.remove(variable);
    else
        environment.insert(variable, QString::fromUtf8(token));
    return environment;
}

ActivationTokenScope::ActivationTokenScope(const QByteArray& token) {
    if (!token.isEmpty())
        qputenv(tokenVariable, token);
}

ActivationTokenScope::~ActivationTokenScope() {
    qunsetenv(tokenVariable);
}

} // namespace lumora
