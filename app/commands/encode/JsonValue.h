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

inline bool isInteger(const rapidjson::Value& value)
{
    return value.IsInt64() || value.IsUint64();
}

// A key's value; null when the key is missing.
const rapidjson::Value* find(const rapidjson::Value& object, const char* key);

// A key that stands twice in the object or in one inside it, but for the one under `except`.
std::optional<std::string_view> repeatedKey(const rapidjson::Value& value,
                                            std::string_view except = {});

// A given text for people, in quotes; no more than the beginning of a long one.
std::string quoted(std::string_view text);

// "is a text, not an integer".
std::string isNot(const rapidjson::Value& value, const char* expected);

// The characters of a text in UTF-8, a byte each. The number of the first one that is above U+00FF,
// from 1; 0 when there is none.
std::size_t readLatin1(std::string_view utf8, std::string& characters);

// Nothing when the text is no row of bytes of two digits each.
std::optional<std::vector<std::uint8_t>> bytesOfHex(std::string_view digits);
