// Texts and numbers in the columns of tables.
#pragma once

#include <cstdint>
#include <string>

// As wide as the column; what is longer ends in "...".
std::string left(std::string text, std::size_t columns);

// At least as wide as the column.
std::string right(const std::string& text, std::size_t columns);
std::string right(std::uint64_t number, std::size_t columns);

std::string withDecimals(double number, int decimals);
