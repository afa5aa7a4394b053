#pragma once

#include <QString>

namespace lumora {

/// What an action acts on, as a key: at most one action with the same key is in flight, and what
/// shows its target is busy meanwhile.
namespace ActionKeys {

inline QString habit(const QString& id) {
    return QStringLiteral("habit:") + id;
}

inline QString chore(const QString& id) {
    return QStringLiteral("chore:") + id;
}

inline const QString capture = QStringLiteral("capture");
inline const QString spending = QStringLiteral("spending");

} // namespace ActionKeys

} // namespace lumora
