// Texts in ASCII: small letters, numbers, counts, blanks.
#pragma once

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

inline std::string inSmallLetters(std::string_view text)
{
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    return result;
}

// The number that the whole text is, if it is one.
template <typename Number>
std::optional<Number> numberIn(std::string_view text)
{
    Number number{};
    const char* const end = text.data() + text.size();
    const auto [last, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && last == end ? std::optional(number) : std::nullopt;
}

// "1 message", "2 messages"
inline std::string countText(std::uint64_t count, const char* what)
{
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

// Without the blanks at both ends, among which the first half of a line's end counts.
inline std::string_view withoutBlanks(std::string_view text)
{
    constexpr const char* blanks = " \t\r";
    const std::size_t begin = std::min(text.find_first_not_of(blanks), text.size());
    return text.substr(begin, text.find_last_not_of(blanks) + 1 - begin);
}
