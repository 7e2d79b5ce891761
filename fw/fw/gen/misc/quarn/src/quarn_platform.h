/* What compilers and platforms say in different ways, for quarn and the codec. Valid C99 and C++.
 */
#ifndef QUARN_PLATFORM_H
#define QUARN_PLATFORM_H

#include <limits.h>

/* What a shared library shows, and what it keeps to itself. */
#if defined(__GNUC__)
#define QUARN_SHOWN __attribute__((visibility("default")))
#define QUARN_HIDDEN __attribute__((visibility("hidden")))
#else
#define QUARN_SHOWN
#define QUARN_HIDDEN
#endif

/* A function that does not return. */
#if defined(__GNUC__)
#define QUARN_NORETURN __attribute__((noreturn))
#else
#define QUARN_NORETURN
#endif

/* A signed 8-bit character: char itself wherever that is signed. */
#if CHAR_MIN < 0
typedef char quarn_char;
#else
typedef signed char quarn_char;
#endif

#ifdef __cplusplus

#if defined(__GNUC__)
#define QUARN_ALWAYS_INLINE [[gnu::always_inline]] inline
#define QUARN_COLD [[gnu::noinline, gnu::cold]]
#define QUARN_FLATTEN [[gnu::flatten]]
#define QUARN_RESTRICT __restrict
#define QUARN_UNROLL_8 _Pragma("GCC unroll 8")
#else
#define QUARN_ALWAYS_INLINE inline
#define QUARN_COLD
#define QUARN_FLATTEN
#define QUARN_RESTRICT
#define QUARN_UNROLL_8
#endif

#include <bit>
#include <climits>
#include <version>

namespace quarn {

// The bytes of an unsigned number in the opposite order.
template <class Word>
constexpr Word reversedBytes(Word word)
{
#if defined(__cpp_lib_byteswap)
    return std::byteswap(word);
#elif defined(__GNUC__)
    if constexpr (sizeof word == 2) {
        return __builtin_bswap16(word);
    } else if constexpr (sizeof word == 4) {
        return __builtin_bswap32(word);
    } else {
        return __builtin_bswap64(word);
    }
#else
    Word reversed = 0;
    for (unsigned i = 0; i < sizeof word; ++i, word >>= CHAR_BIT) {
        reversed = static_cast<Word>(reversed << CHAR_BIT | (word & 0xFF));
    }
    return reversed;
#endif
}

}    // namespace quarn

#endif

#endif
