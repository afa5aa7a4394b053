#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>

#include <chrono>
#include <optional>

namespace lumora::companion {

/// The last good answer of a server, as it is kept on disk.
struct KeptBody {
    QByteArray etag;         ///< empty: none
    QByteArray lastModified; ///< empty: none
    std::chrono::sys_seconds fetchedAt;
    QByteArray body;

    bool operator==(const KeptBody&) const = default;
};

/// The file in `folder` that keeps the body of `url`. Its name does not tell the address.
[[nodiscard]] QString keptBodyPath(const QString& folder, const QUrl& url);

/// What stands in the file at `path`; absent when there is none, or another's.
[[nodiscard]] std::optional<KeptBody> readKeptBody(const QString& path);

/// Writes it as a whole, for the user's eyes only, and makes the folder where it is missing. Where
/// that fails, the next start has to wait for the server; nothing else is lost.
void keepBody(const QString& path, const KeptBody& kept);

/// Removes from `folder` the bodies of all addresses but `urls`: those are of calendars that the
/// user gave up.
void forgetOtherBodies(const QString& folder, const QList<QUrl>& urls);

} // namespace lumora::companion
