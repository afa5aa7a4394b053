#include "platform/linux/DesktopUrlOpener.h"

#include <QDesktopServices>

namespace lumora {

bool DesktopUrlOpener::open(const QUrl& url) {
    return url.isValid() && !url.scheme().isEmpty() && QDesktopServices::openUrl(url);
}

} // namespace lumora
