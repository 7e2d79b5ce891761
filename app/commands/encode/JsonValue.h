// Values in JSON as people give them.
#pragma once

#include <rapidjson/document.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

inline std::string_view textOf(const rapidjson::Value& value)
{
    return {value.GetString(), value.GetStringLength()};
}

// A key's value; null when the key is missing.
const rapidjson::Value* find(const rapidjson::Value& object, const char* key);

// A key that stands twice in the object or in one inside it, but for the one under `except`.
std::optional<std::string_view> repeatedKey(const rapidjson::Value& value,
                                            std::string_view except = {});

// A given text for people, in quotes; no more than the beginning of a long one.
std::string quoted(std::string_view text);

// Appends the characters of a text in valid UTF-8, from -128 to 127 as the codec holds them.
// Returns what is wrong; empty when nothing is.
std::string readLatin1(std::string_view utf8, std::vector<std::int64_t>& characters);

// Empty when the text is no row of bytes of two digits each.
std::vector<std::uint8_t> bytesOfHex(std::string_view digits);
