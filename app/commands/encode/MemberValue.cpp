#include "commands/encode/MemberValue.h"

#include <cstring>

namespace memberValue {
namespace {

bool isSigned(const RTCM2_member_s& row)
{
    return row.type == RTCM2_TYPE_SIGNED;
}

Integer smallest(const RTCM2_member_s& row)
{
    return isSigned(row) ? Integer{~lowMask(row.bits - 1U), true} : Integer{};
}

Integer largest(const RTCM2_member_s& row)
{
    return {lowMask(isSigned(row) ? row.bits - 1U : row.bits)};
}

template <class T>
void putAt(char* place, std::uint64_t bits)
{
    const T value = static_cast<T>(bits);
    std::memcpy(place, &value, sizeof value);
}

template <class T>
std::uint64_t getAt(const char* place)
{
    T value;
    std::memcpy(&value, place, sizeof value);
    return value;
}

std::uint64_t bitsAt(const char* place, unsigned size)
{
    switch (size) {
    case 1:
        return getAt<std::uint8_t>(place);
    case 2:
        return getAt<std::uint16_t>(place);
    case 4:
        return getAt<std::uint32_t>(place);
    default:
        return getAt<std::uint64_t>(place);
    }
}

}    // namespace

std::uint64_t lowMask(unsigned bits)
{
    return bits >= 64 ? ~std::uint64_t{0} : (std::uint64_t{1} << bits) - 1;
}

bool fits(const RTCM2_member_s& row, Integer value)
{
    return value.negative ? isSigned(row) && value.bits >= smallest(row).bits
                          : value.bits <= largest(row).bits;
}

std::string misfitText(const RTCM2_member_s& row, Integer value)
{
    return value.text() + " does not fit " + std::to_string(row.bits) +
           (row.bits == 1 ? " bit (" : " bits (") + smallest(row).text() + " to " +
           largest(row).text() + ")";
}

Integer load(const RTCM2_member_s& row, const char* place)
{
    const unsigned width = 8U * row.size;
    const std::uint64_t bits = bitsAt(place, row.size);
    const bool negative = isSigned(row) && (bits >> (width - 1U) & 1U) != 0;
    return {negative ? bits | ~lowMask(width) : bits, negative};
}

void store(const RTCM2_member_s& row, char* place, Integer value)
{
    switch (row.size) {
    case 1:
        return putAt<std::uint8_t>(place, value.bits);
    case 2:
        return putAt<std::uint16_t>(place, value.bits);
    case 4:
        return putAt<std::uint32_t>(place, value.bits);
    default:
        return putAt<std::uint64_t>(place, value.bits);
    }
}

}    // namespace memberValue
