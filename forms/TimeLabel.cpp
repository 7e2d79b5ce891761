#include "forms/TimeLabel.h"

#include "forms/TimeStamp.h"

namespace {

// The last word that is a time, alone or with the word behind it: date and time of day.
std::optional<std::int64_t> lastTime(std::string_view label, std::string_view between)
{
    std::size_t nextEnd = 0;    // of the word behind this one; 0 if there is none
    for (std::size_t end = label.find_last_not_of(between); end != label.npos;) {
        const std::size_t before = label.find_last_of(between, end);
        const std::size_t begin = before == label.npos ? 0 : before + 1;
        const std::size_t size = end + 1 - begin;
        auto time = timeOfText(label.substr(begin, size));
        if (!time && nextEnd != 0) {
            time = timeOfText(label.substr(begin, nextEnd - begin));
        }
        if (time || begin == 0) {
            return time;
        }
        nextEnd = end + 1;
        end = label.find_last_not_of(between, before);
    }
    return std::nullopt;
}

}    // namespace

std::optional<std::int64_t> timeInLabel(std::string_view label)
{
    // A comma may stand before decimals.
    const auto time = lastTime(label, " \t;|[]()<>\"");
    return time ? time : lastTime(label, " \t;|[]()<>\",");
}
