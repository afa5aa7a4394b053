#include "linux/session/DesktopUrlOpener.h"

#include <QDesktopServices>

namespace lumora {

namespace {

constexpr char tokenVariable[] = "XDG_ACTIVATION_TOKEN";

} // namespace

bool DesktopUrlOpener::open(const QUrl& url, const QByteArray& activationToken) {
    // The opened program finds its token in the environment that it inherits; ours stays clean.
    if (!activationToken.isEmpty())
        qputenv(tokenVariable, activationToken);
    const bool opened = QDesktopServices::openUrl(url);
    qunsetenv(tokenVariable);
    return opened;
}

} // namespace lumora
