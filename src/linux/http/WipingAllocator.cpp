#include "linux/http/WipingAllocator.h"

#include <curl/curl.h>
#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace lumora {

namespace {

void wipingFree(void* memory) {
    if (memory == nullptr)
        return;
    explicit_bzero(memory, malloc_usable_size(memory));
    std::free(memory);
}

// Never in place: what would be cut off, or left behind by moving, has to be wiped as well.
void* wipingRealloc(void* memory, size_t size) {
    if (memory == nullptr)
        return std::malloc(size);
    void* const moved = std::malloc(size);
    if (moved == nullptr)
        return nullptr;
    std::memcpy(moved, memory, std::min(size, malloc_usable_size(memory)));
    wipingFree(memory);
    return moved;
}

} // namespace

void makeCurlWipeItsMemory() {
    curl_global_init_mem(
        CURL_GLOBAL_DEFAULT, &std::malloc, &wipingFree, &wipingRealloc, &strdup, &std::calloc);
}

} // namespace lumora
