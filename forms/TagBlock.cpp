#include "forms/TagBlock.h"

#include "forms/AisSentence.h"
#include "forms/TimeLabel.h"
#include "forms/TimeStamp.h"

#include <charconv>

namespace {

template <class Number>
std::optional<Number> numberOf(std::string_view text)
{
    Number number = 0;
    const char* const end = text.data() + text.size();
    const auto [last, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && last == end ? std::optional(number) : std::nullopt;
}

// Seconds since 1970, or milliseconds: in seconds, this many would be in the year 5138.
std::optional<std::int64_t> timeOf(std::string_view text)
{
    constexpr std::int64_t fewestMilliseconds = 100'000'000'000;
    constexpr std::int64_t most = 253'402'300'799'999;    // the last one of the year 9999
    const auto number = numberOf<std::int64_t>(text);
    if (!number) {
        return timeOfText(text);
    }
    if (*number < 0 || *number > most) {
        return std::nullopt;
    }
    return *number * (*number < fewestMilliseconds ? 1'000'000 : 1'000);
}

// One "key:value" of a tag block.
void take(TagBlock& tags, std::string_view field)
{
    if (field.starts_with("c:")) {
        tags.received = timeOf(field.substr(2));
    } else if (field.starts_with("g:")) {
        tags.group = numberOf<std::uint32_t>(field.substr(field.rfind('-') + 1));
    }
}

// What stands between two backslashes.
void takeBlock(TagBlock& tags, std::string_view block)
{
    const std::size_t star = block.rfind('*');
    if (star == block.npos ||
        checksumAt(block.substr(star + 1)) != static_cast<int>(checksumOf(block.substr(0, star)))) {
        return;
    }
    std::string_view rest = block.substr(0, star);
    while (!rest.empty()) {
        const std::size_t comma = rest.find(',');
        take(tags, rest.substr(0, comma));
        rest.remove_prefix(comma == rest.npos ? rest.size() : comma + 1);
    }
}

}    // namespace

TagBlock tagBlockBefore(std::string_view text)
{
    TagBlock tags;
    while (text.ends_with('\\')) {
        const std::size_t end = text.size() - 1;
        const std::size_t begin = text.substr(0, end).rfind('\\');
        if (begin == text.npos) {
            break;
        }
        takeBlock(tags, text.substr(begin + 1, end - begin - 1));
        text = text.substr(0, begin);
    }
    if (!tags.received) {
        tags.received = timeInLabel(text);
    }
    return tags;
}
