#include "linux/session/DesktopUrlOpener.h"

#include "platform/ActivationToken.h"

#include <QDesktopServices>
#include <QProcess>

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

DesktopUrlOpener::DesktopUrlOpener(Options options)
    : m_options(std::move(options)) {}

void DesktopUrlOpener::open(const QUrl& url, const QByteArray& activationToken) {
    if (!isForToolkit(activationToken) && start(url, activationToken))
        return;
    const ActivationTokenScope token(activationToken); // which the opened program inherits
    QDesktopServices::openUrl(url);
}

// On Wayland Qt 6.8 first asks for a token in the name of the window with the focus. That is what
// is wanted where there is none yet; but it waits for ever for the token of a window in the layer.
bool DesktopUrlOpener::isForToolkit(const QByteArray& activationToken) const {
    const bool onWayland = m_options.platform.startsWith(u"wayland");
    return !onWayland || (!m_options.hasLayer && activationToken.isEmpty());
}

/// What the toolkit does too.
bool DesktopUrlOpener::start(const QUrl& url, const QByteArray& activationToken) const {
    QProcess opener;
    opener.setProgram(u"xdg-open"_s);
    opener.setArguments({url.toString(QUrl::FullyEncoded)});
    opener.setProcessEnvironment(withActivationToken(m_options.environment, activationToken));
    return opener.startDetached();
}

} // namespace lumora
