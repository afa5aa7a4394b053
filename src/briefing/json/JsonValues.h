#pragma once

#include "briefing/json/DecodeError.h"

#include <QString>

#include <simdjson.h>

namespace lumora {

/// The JSON library's text as one of the toolkit's.
QString toQString(std::string_view utf8);

// Each of these reads one JSON value into `out`. False when the value is of another kind; `error`
// then describes the fault, with a path that starts at this value.

[[nodiscard]] bool readValue(simdjson::dom::element value, QString& out, DecodeError& error);
[[nodiscard]] bool readValue(simdjson::dom::element value, bool& out, DecodeError& error);

/// A number written without a fraction, or with one that is zero, within 64 bits.
[[nodiscard]] bool readValue(simdjson::dom::element value, qint64& out, DecodeError& error);

/// Any number.
[[nodiscard]] bool readValue(simdjson::dom::element value, double& out, DecodeError& error);

/// Describes that `value` is not `wanted` ("a string"). Always false.
bool wrongKind(simdjson::dom::element value, QLatin1StringView wanted, DecodeError& error);

/// Puts the member `key` before the path of `error`.
void prependKey(DecodeError& error, std::string_view key);

/// Puts the array position `index` before the path of `error`.
void prependIndex(DecodeError& error, size_t index);

} // namespace lumora
