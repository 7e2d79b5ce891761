// The JSON library takes the memory that it asks for as given. The linker leads its calls here
// (--wrap), and when there is none the program ends as it does elsewhere, see LastWords.h.
#include "base/LastWords.h"

#include <cstddef>

extern "C" {

// NOLINTBEGIN(bugprone-reserved-identifier,readability-identifier-naming)
void* __real_malloc(std::size_t size);
void* __real_realloc(void* memory, std::size_t size);
void* __wrap_malloc(std::size_t size) noexcept;
void* __wrap_realloc(void* memory, std::size_t size) noexcept;

void* __wrap_malloc(std::size_t size) noexcept
{
    void* const memory = __real_malloc(size);
    if (memory == nullptr && size > 0) {
        lastWords::endWithoutMemory();
    }
    return memory;
}

void* __wrap_realloc(void* memory, std::size_t size) noexcept
{
    void* const moved = __real_realloc(memory, size);
    if (moved == nullptr && size > 0) {
        lastWords::endWithoutMemory();
    }
    return moved;
}
// NOLINTEND(bugprone-reserved-identifier,readability-identifier-naming)
}
