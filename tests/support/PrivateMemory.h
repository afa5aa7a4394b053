#pragma once

#include <QtGlobal>

namespace lumora::tests {

/// Whether memory says anything: the sanitizers keep what is freed, to notice who still uses it.
#ifdef __SANITIZE_ADDRESS__
constexpr bool memoryIsMeasurable = false;
#else
constexpr bool memoryIsMeasurable = true;
#endif

/// The memory that a process has for itself alone and has written to, in KiB; throws when that
/// cannot be read.
qint64 privateMemory(qint64 process);

} // namespace lumora::tests
