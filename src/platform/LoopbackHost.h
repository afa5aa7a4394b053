#pragma once

#include <QString>

namespace lumora {

/// Whether `host`, as `QUrl::host()` gives it, names this very computer: 127.0.0.0/8, ::1 or
/// localhost. Names are not looked up.
bool isLoopbackHost(const QString& host);

} // namespace lumora
