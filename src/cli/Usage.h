#pragma once

#include <QString>

namespace lumora {

/// What `--help` prints.
QString usageText();

} // namespace lumora
