// The integer values of a record's members.
#pragma once

#include "Integer.h"
#include "MemberTable.h"

#include <cstdint>
#include <string>

namespace memberValue {

// So many low bits.
std::uint64_t lowMask(unsigned bits);

// Whether the member's bits hold the value, and what to tell people if not.
bool fits(const rtcm2::MemberRow& row, Integer value);
std::string misfitText(const rtcm2::MemberRow& row, Integer value);

// Read and write the member at its place in a record.
Integer load(const rtcm2::MemberRow& row, const char* place);
void store(const rtcm2::MemberRow& row, char* place, Integer value);

}    // namespace memberValue
