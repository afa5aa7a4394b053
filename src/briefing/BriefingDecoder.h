#pragma once

#include "briefing/Briefing.h"
#include "briefing/json/DecodeError.h"

#include <QByteArrayView>

#include <tl/expected.hpp>

namespace lumora {

/// Reads a briefing from its JSON text. All or nothing: a missing or null required member, a member
/// of the wrong type or a bad date anywhere fails the whole document, and the error names the first
/// fault in the order of the records' fields. Unknown members are ignored; of members with the same
/// name the last one counts. Any byte string gives one or the other.
[[nodiscard]] tl::expected<Briefing, DecodeError> decodeBriefing(QByteArrayView bytes);

} // namespace lumora
