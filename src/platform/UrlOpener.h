#pragma once

#include <QByteArray>
#include <QUrl>

namespace lumora {

/// Opens addresses in the program that the user's desktop has for them.
class UrlOpener {
public:
    virtual ~UrlOpener() = default;

    /// Hands `url`, which the caller's `LinkPolicy` allows, to the desktop; nothing is heard of
    /// what that cannot open. The activation token lets the opened program come to the front; empty
    /// where the desktop gave none.
    virtual void open(const QUrl& url, const QByteArray& activationToken) = 0;
};

} // namespace lumora
