#pragma once

namespace lumora {

/// Gives back to the system what the program has freed, which its allocator keeps otherwise: after
/// a document of a hundred thousand rows, tens of megabytes. Costs next to nothing while less than
/// a mebibyte lies spare, and little where there is nothing left to give.
void returnSpareMemory();

} // namespace lumora
