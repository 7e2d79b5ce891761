#include "commands/encode/JsonValue.h"

#include <rapidjson/memorystream.h>

#include <algorithm>
#include <charconv>

using rapidjson::Value;

const Value* find(const Value& object, const char* key)
{
    const auto found = object.FindMember(key);
    return found != object.MemberEnd() ? &found->value : nullptr;
}

std::optional<std::string_view> repeatedKey(const Value& value, std::string_view except)
{
    std::optional<std::string_view> key;
    if (value.IsArray()) {
        for (auto i = value.Begin(); !key && i != value.End(); ++i) {
            key = repeatedKey(*i);
        }
    }
    if (value.IsObject()) {
        std::vector<std::string_view> keys;
        for (auto i = value.MemberBegin(); !key && i != value.MemberEnd(); ++i) {
            keys.push_back(textOf(i->name));
            key = keys.back() == except ? std::nullopt : repeatedKey(i->value);
        }
        std::sort(keys.begin(), keys.end());
        const auto repeated = std::adjacent_find(keys.begin(), keys.end());
        key = repeated != keys.end() ? *repeated : key;
    }
    return key;
}

std::string quoted(std::string_view text)
{
    constexpr std::size_t longest = 60;
    return '"' + std::string(text.substr(0, longest)) + (text.size() > longest ? "...\"" : "\"");
}

std::string readLatin1(std::string_view utf8, std::vector<std::int64_t>& characters)
{
    rapidjson::MemoryStream stream(utf8.data(), utf8.size());
    while (stream.Tell() < utf8.size()) {
        unsigned code = 0;
        rapidjson::UTF8<>::Decode(stream, &code);
        if (code > 0xFF) {
            return "character " + std::to_string(characters.size() + 1) + " is above U+00FF";
        }
        characters.push_back(static_cast<std::int8_t>(code));
    }
    return {};
}

std::vector<std::uint8_t> bytesOfHex(std::string_view digits)
{
    std::vector<std::uint8_t> bytes(digits.size() / 2);
    bool isGood = digits.size() % 2 == 0;
    for (std::size_t i = 0; isGood && i < bytes.size(); ++i) {
        const char* const end = digits.data() + 2 * i + 2;
        isGood = std::from_chars(end - 2, end, bytes[i], 16).ptr == end;
    }
    return isGood ? bytes : std::vector<std::uint8_t>();
}
