#pragma once

#include <QByteArrayView>
#include <QList>
#include <QStringList>

#include <optional>

namespace lumora::companion {

/// The rows of a table with commas between its fields, which may stand in double quotes; a double
/// quote within them is written twice. Absent when a quote is not closed.
[[nodiscard]] std::optional<QList<QStringList>> csvRows(QByteArrayView csv);

} // namespace lumora::companion
