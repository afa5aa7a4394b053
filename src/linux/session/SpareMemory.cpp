#include "linux/session/SpareMemory.h"

#include <malloc.h>

namespace lumora {

void shareMemoryAmongThreads() {
    mallopt(M_ARENA_MAX, 1); // NOLINT(concurrency-mt-unsafe): before there are threads
}

void returnSpareMemory() {
    // What lies spare tells nothing of how much of it is still the program's: blocks stay spare to
    // the allocator when their pages have been given back.
    constexpr size_t worthwhile = size_t{1} << 20;
    if (mallinfo2().fordblks >= worthwhile)
        malloc_trim(0);
}

} // namespace lumora
