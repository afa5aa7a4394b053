#pragma once

#include <QByteArray>

#include <optional>

namespace lumora {

/// `value` as it may stand in a header line: without surrounding spaces, tabs and line ends.
/// Absent when a line end or a zero byte is left, which would make more than one line of it.
[[nodiscard]] std::optional<QByteArray> headerValue(const QByteArray& value);

} // namespace lumora
