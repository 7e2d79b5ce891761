// The characters of text fields. A character of a message is one byte and means the code point of
// the same number.
#pragma once

#include <string>
#include <string_view>

// The characters before the first NUL.
std::string_view upToFirstNul(std::string_view characters);

// Appends the characters in UTF-8.
void appendUtf8(std::string& text, std::string_view characters);

// The characters in UTF-8. Many programs and databases take a NUL for the end of a text; U+2400
// pictures it.
std::string withoutNuls(std::string_view characters);

// The most bytes that a character becomes in JSON.
inline constexpr std::size_t jsonCharacterRoom = 6;

// Writes the characters as they stand within the quotes of a string in JSON, and gives the place
// behind them. There is room for jsonCharacterRoom bytes each.
char* putJson(char* out, std::string_view characters);

// The text with U+FFFD instead of bytes that are no UTF-8: files may be called anything.
std::string validUtf8(std::string_view text);

// A text in UTF-8 as a string in JSON, with its quotes; bytes that are no UTF-8 become U+FFFD.
std::string jsonString(std::string_view utf8);
