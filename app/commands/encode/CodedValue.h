// Coded values by what they mean.
#pragma once

#include "RTCM2_format.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// The text that stands for this value of a member and for no other; null when there is none.
const char* ownText(const RTCM2_member_s& member, std::int64_t value);

// Appends the one value that has this text, as `export --texts` writes it. Returns what is wrong;
// empty when nothing is.
std::string readCoded(const RTCM2_member_s& member, std::string_view text,
                      std::vector<std::int64_t>& integers);
