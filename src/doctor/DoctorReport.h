#pragma once

#include "doctor/Finding.h"

#include <QByteArray>

#include <vector>

namespace lumora {

/// The findings for a terminal: a line each, ended, with what helps below those that need it.
[[nodiscard]] QString doctorText(const std::vector<Finding>& findings);

/// The findings for a bug report: one JSON object on one line. The name of `host`, which may say
/// who somebody is, is left out; empty: there is none.
[[nodiscard]] QByteArray
doctorJson(const std::vector<Finding>& findings, const QString& version, const QString& host);

/// The first broken link; null where none is.
[[nodiscard]] const Finding* firstBroken(const std::vector<Finding>& findings);

} // namespace lumora
