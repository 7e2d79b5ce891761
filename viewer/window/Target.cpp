#include "viewer/window/Target.h"

#include "forms/TimeStamp.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace {

std::optional<std::uint64_t> wholeNumber(std::string_view text)
{
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(number)
                                                                    : std::nullopt;
}

Target ofNumber(std::uint64_t number, const MessageIndex& index)
{
    return number > 0 && number <= index.size()
               ? Target{.place = number - 1}
               : Target{.problem = "there is no message " + std::to_string(number) +
                                   "; the last one is " + std::to_string(index.size())};
}

// The message in which the byte stands, or the first one behind it.
Target ofByte(std::uint64_t byte, const MessageIndex& index)
{
    const std::size_t count = index.size();
    for (std::size_t place = 0; place < count; ++place) {
        if (index[place].end() > byte) {
            return {.place = place};
        }
    }
    return {.problem = "no message stands at byte " + std::to_string(byte) + " or behind it"};
}

// The first one from `here` on, and then from the beginning, that was sent at this time or less
// than a minute later.
Target ofClock(std::int64_t milliseconds, const MessageIndex& index, std::size_t here)
{
    constexpr std::int64_t near = 60'000;
    const std::size_t count = index.size();
    for (std::size_t step = 1; step <= count; ++step) {
        const std::size_t place = (here + step) % count;
        const std::int64_t time = index[place].time;
        if (time != IndexEntry::noTime && time >= milliseconds && time < milliseconds + near) {
            return {.place = place};
        }
    }
    return {.problem = "no message was sent at this time"};
}

Target ofSent(std::int64_t microseconds, const MessageIndex& index)
{
    const std::size_t count = index.size();
    for (std::size_t place = 0; place < count; ++place) {
        if (index[place].sent != IndexEntry::notSent && index[place].sent >= microseconds) {
            return {.place = place};
        }
    }
    return {.problem = "no message was sent at this time or later"};
}

// Of "30:15" or "2:30:15" with two digits behind each colon.
std::optional<std::int64_t> microsecondsOf(std::string_view text)
{
    constexpr std::int64_t hour = 3'600'000'000;
    const std::size_t colon = text.find(':');
    const bool hasHours = text.find(':', colon + 1) != std::string_view::npos;
    const auto hours = hasHours ? wholeNumber(text.substr(0, colon)) : std::optional(0UL);
    if (!hours) {
        return std::nullopt;
    }
    std::string ofHour(hasHours ? text.substr(colon + 1) : text);
    ofHour.insert(0, colon == 1 && !hasHours ? "0" : "");
    const auto rest = timeOfText("1970-01-01T00:" + ofHour);
    return rest ? std::optional(static_cast<std::int64_t>(*hours) * hour + *rest) : std::nullopt;
}

}    // namespace

Target targetOf(std::string_view text, const MessageIndex& index, std::size_t here)
{
    while (!text.empty() && text.front() == ' ') {
        text.remove_prefix(1);
    }
    while (!text.empty() && text.back() == ' ') {
        text.remove_suffix(1);
    }
    if (const auto number = wholeNumber(text)) {
        return ofNumber(*number, index);
    }
    if (text.starts_with('@')) {
        if (const auto byte = wholeNumber(text.substr(1))) {
            return ofByte(*byte, index);
        }
    }
    if (const auto time =
            text.find(':') != std::string_view::npos ? microsecondsOf(text) : std::nullopt) {
        const bool hasHours = std::count(text.begin(), text.end(), ':') == 2;
        return hasHours ? ofSent(*time, index) : ofClock(*time / 1000, index, here);
    }
    return {.problem = "'" + std::string(text) +
                       "' is neither a number such as 17, a byte such as @1000 nor a time such as "
                       "30:15 or 2:30:15"};
}
