#pragma once

#include <QUrl>

namespace lumora {

/// Opens addresses in the program that the user's desktop has for them.
class UrlOpener {
public:
    virtual ~UrlOpener() = default;

    /// Hands `url` to the desktop; false when it was refused or nothing could be started.
    virtual bool open(const QUrl& url) = 0;
};

} // namespace lumora
