#pragma once

namespace lumora {

/// From now on threads take memory from where the main thread does, so that all of it can be given
/// back: of what a thread has for itself, the end stays. To be called before there are threads.
void shareMemoryAmongThreads();

/// Gives back to the system what the program has freed, which its allocator keeps otherwise: after
/// a document of a hundred thousand rows, tens of megabytes. Costs next to nothing while less than
/// a mebibyte lies spare, and little where there is nothing left to give.
void returnSpareMemory();

} // namespace lumora
