#pragma once

#include "Input.h"

#include <QVariantList>

namespace lumora::fuzz {

/// Arguments of a D-Bus message, of any types that the desktop's programs send, one within the
/// other. The bytes of each are its type's and then its value's.
[[nodiscard]] QVariantList someArguments(Input& input);

} // namespace lumora::fuzz
