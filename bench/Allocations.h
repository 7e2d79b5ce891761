// Counts what is allocated on the heap, by whatever library.
#pragma once

#include <cstdint>

namespace bench {

// Calls of malloc, calloc, realloc and aligned_alloc by this thread so far.
std::uint64_t allocations();

}    // namespace bench
