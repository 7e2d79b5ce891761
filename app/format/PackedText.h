// Packed messages as text.
#pragma once

#include <cstdint>
#include <span>
#include <string>

// Appends two lower-case hexadecimal digits a byte.
void appendHex(std::string& text, std::span<const std::uint8_t> packed);

// Appends the bits from bit `begin` to the end of the packed message as zeros and ones, unless they
// are the usual fill 1010... or there are none.
void appendUnusualFill(std::string& text, std::span<const std::uint8_t> packed, std::size_t begin);
