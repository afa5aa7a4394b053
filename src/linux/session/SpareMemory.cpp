#include "linux/session/SpareMemory.h"

#include <malloc.h>

namespace lumora {

void returnSpareMemory() {
    constexpr size_t worthwhile = size_t{1} << 20;
    // Blocks stay spare to the allocator when their pages are given back.
    static size_t alreadyGivenBack = 0;
    const size_t spare = mallinfo2().fordblks;
    if (spare < alreadyGivenBack + worthwhile)
        return;
    malloc_trim(0);
    alreadyGivenBack = mallinfo2().fordblks;
}

} // namespace lumora
