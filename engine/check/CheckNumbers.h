// Numbers in the texts of a check.
#pragma once

#include <cstdint>
#include <string>

// "1 message", "2 messages"
std::string countText(std::uint64_t count, const char* what);

// Seconds as "50:12.6", with hours before that if there are any.
std::string minutesText(double seconds);
