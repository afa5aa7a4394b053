#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace lumora {

/// What the service replied to an action that it took. Every member is absent when the reply does
/// not have it.
struct ActionResult {
    std::optional<bool> ok;
    std::optional<bool> queued;    ///< false: the service declined for now
    std::optional<QString> reason; ///< why, for the user

    bool operator==(const ActionResult&) const = default;
};

/// Reads the body of a successful reply. One that is no such object, or holds a member of another
/// type, says no more than that the action was taken: `ok` is true and the rest absent.
ActionResult decodeActionResult(const QByteArray& body);

} // namespace lumora
