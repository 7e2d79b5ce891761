// Packed messages as text.
#pragma once

#include "base/Text.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

// Appends two lower-case hexadecimal digits a byte.
void appendHex(std::string& text, std::span<const std::uint8_t> packed);

// Appends lines of 16 bytes: where they begin, in hexadecimal digits and as characters, those that
// are no visible ASCII as points.
void appendByteLines(Text& text, std::span<const std::uint8_t> bytes, std::string_view indent);

// Appends the bits from bit `begin` to the end of the packed message as zeros and ones, unless they
// are the usual fill 1010... or there are none.
void appendUnusualFill(std::string& text, std::span<const std::uint8_t> packed, std::size_t begin);
