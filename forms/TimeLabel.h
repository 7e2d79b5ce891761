// The time stamp among the words that a logger writes beside a message.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

// The last point in time among words with blanks, commas, brackets and the like between them:
// "[2026-11-23 20:03:06.125] rx2", "r003669945,1165795916". Nothing where there is none.
std::optional<std::int64_t> timeInLabel(std::string_view label);
