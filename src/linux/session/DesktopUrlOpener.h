#pragma once

#include "platform/UrlOpener.h"

namespace lumora {

/// Opens addresses through the desktop's own handlers, never through a shell.
class DesktopUrlOpener final : public UrlOpener {
public:
    bool open(const QUrl& url, const QByteArray& activationToken) override;
};

} // namespace lumora
