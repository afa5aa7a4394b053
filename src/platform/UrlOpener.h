#pragma once

#include <QByteArray>
#include <QUrl>

#include <optional>

namespace lumora {

/// Opens addresses in the program that the user's desktop has for them.
class UrlOpener {
public:
    virtual ~UrlOpener() = default;

    /// Hands `url` to the desktop; nothing is heard of what that cannot open. The activation token
    /// lets the opened program come to the front; empty where the desktop gave none.
    virtual void open(const QUrl& url, const QByteArray& activationToken) = 0;
};

/// Whether an address that came over the network may be opened: it needs a scheme, and none that
/// reads local files or runs code.
[[nodiscard]] bool isSafeLink(const QUrl& url);

/// The address that `text` is; absent when it does not parse or is no safe link.
[[nodiscard]] std::optional<QUrl> safeLink(const QString& text);

} // namespace lumora
