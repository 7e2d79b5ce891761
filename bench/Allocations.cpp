#include "Allocations.h"

#include <cerrno>
#include <cstddef>

// The C library's own functions. Those of the same names below stand before them for the whole
// process, C++'s operator new included.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
}

namespace {

thread_local std::uint64_t count = 0;

}    // namespace

std::uint64_t bench::allocations()
{
    return count;
}

extern "C" {

void* malloc(std::size_t size)
{
    ++count;
    return __libc_malloc(size);
}

void* calloc(std::size_t elements, std::size_t size)
{
    ++count;
    return __libc_calloc(elements, size);
}

void* realloc(void* block, std::size_t size)
{
    ++count;
    return __libc_realloc(block, size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size)
{
    ++count;
    return __libc_memalign(alignment, size);
}
}
