#pragma once

#include <QByteArray>

namespace lumora {

/// All that there is on standard input, up to a little more than `longest` bytes.
[[nodiscard]] QByteArray standardInput(qsizetype longest);

} // namespace lumora
