#pragma once

#include <QString>
#include <QStringList>
#include <QUrl>

#include <optional>

namespace lumora::companion {

/// Where in an event a link to join its meeting may stand. An empty text: it has none.
struct LinkTexts {
    QStringList conferences{}; ///< those of conferences with a picture come first
    QString google{};
    QString teams{};
    QString outlook{}; ///< to a meeting of another service
    QString url{};
    QString location{};
    QString description{};
    QString html{}; ///< the description once more
};

/// The link to join the meeting: the first in the order above. What programs put there for the
/// purpose is taken as it is; a link in a text only when it leads to where meetings are joined, or
/// to one of `hosts` or its subdomains, or when it is all that the location says.
/// Always https, or http to one of `hosts`.
[[nodiscard]] std::optional<QUrl> joinLink(const LinkTexts& texts, const QStringList& hosts);

} // namespace lumora::companion
