// The integer values of a record's members.
#pragma once

#include "RTCM2_format.h"
#include "commands/encode/Integer.h"

#include <cstdint>
#include <string>

// What people call a kind or a member: its name in code where it is not described.
template <class Row>
const char* labelOf(const Row& row)
{
    return *row.display != '\0' ? row.display : row.name;
}

namespace memberValue {

// So many low bits.
std::uint64_t lowMask(unsigned bits);

// Whether the member's bits hold the value, and what to tell people if not.
bool fits(const RTCM2_member_s& row, Integer value);
std::string misfitText(const RTCM2_member_s& row, Integer value);

// Read and write the member at its place in a record.
Integer load(const RTCM2_member_s& row, const char* place);
void store(const RTCM2_member_s& row, char* place, Integer value);

}    // namespace memberValue
