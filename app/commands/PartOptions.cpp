#include "commands/PartOptions.h"

#include "base/Terminal.h"
#include "commands/Command.h"
#include "commands/CommonOptions.h"
#include "forms/TimeStamp.h"
#include "sources/Sources.h"

#include <algorithm>
#include <charconv>

namespace {

// Takes a number off the front; nothing where there is none.
std::optional<std::uint64_t> takeNumber(std::string_view& text)
{
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc()) {
        return std::nullopt;
    }
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return number;
}

// Of "1000-2000" or "1000-".
std::optional<ByteRange> rangeOf(std::string_view text)
{
    const auto begin = takeNumber(text);
    if (!begin || !text.starts_with('-')) {
        return std::nullopt;
    }
    text.remove_prefix(1);
    if (text.empty()) {
        return ByteRange{.begin = *begin};
    }
    const auto end = takeNumber(text);
    return end && text.empty() && *end > *begin
               ? std::optional(ByteRange{.begin = *begin, .end = *end})
               : std::nullopt;
}

std::string wrongRange(const std::string& text)
{
    return rangeOf(text) ? std::string()
                         : "'" + text +
                               "' is no range of bytes: it has to be FROM-TO, as in 0-1000000, or "
                               "FROM- for all the rest, with TO larger than FROM";
}

// "MM:SS" or "HH:MM:SS", with decimals or without: microseconds, and in which period they recur.
std::optional<WindowBound> timeOfClock(std::string_view text)
{
    const auto colons = std::count(text.begin(), text.end(), ':');
    if (colons < 1 || colons > 2) {
        return std::nullopt;
    }
    const std::string day = "1970-01-01T" + std::string(colons == 1 ? "00:" : "");
    const auto time = timeOfText(day + std::string(text));
    return time ? std::optional(WindowBound{.by = WindowBound::By::sent,
                                            .value = *time,
                                            .period = HourClock::hour * (colons == 1 ? 1 : 24)})
                : std::nullopt;
}

// `hasDate`: times of more than the hour are those that messages carry.
std::optional<WindowBound> boundOf(std::string_view text, bool hasDate)
{
    using By = WindowBound::By;
    std::string_view rest = text;
    const auto number = takeNumber(rest);
    if (number && rest.empty()) {
        return *number > 0 && *number <= INT64_MAX
                   ? std::optional(
                         WindowBound{.by = By::number, .value = static_cast<std::int64_t>(*number)})
                   : std::nullopt;
    }
    std::optional<WindowBound> bound = timeOfClock(text);
    if (!bound) {
        const auto time = timeOfText(text);
        bound = time ? std::optional(WindowBound{.by = By::sent, .value = *time}) : std::nullopt;
    }
    if (bound && bound->period != HourClock::hour && !hasDate) {
        bound->by = By::received;
    }
    return bound;
}

// Of "2026-11-23T14" the middle of the hour, to which the whole hour is near.
std::optional<std::int64_t> dateOf(const std::string& text)
{
    const auto hour = timeOfText(text + ":30:00");
    const auto minute = timeOfText(text + ":00");
    return hour ? hour : minute ? minute : timeOfText(text);
}

std::string wrongBound(const std::string& text)
{
    return boundOf(text, false) ? std::string()
                                : "'" + text +
                                      "' is neither the number of a message, from 1, nor a time "
                                      "such as 30:15, 14:30:15 or 2026-11-23T14:30:15Z";
}

std::string wrongDate(const std::string& text)
{
    return dateOf(text) ? std::string()
                        : "'" + text +
                              "' is no date with an hour: it has to be like 2026-11-23T14 or "
                              "2026-11-23T14:30:15";
}

}    // namespace

void PartOptions::declare(CLI::App& command)
{
    command
        .add_option("--range", range,
                    "Only messages that begin in these bytes of a file, from 0; TO itself is not "
                    "among them, and without TO it is all the rest. Ranges side by side give "
                    "together what the whole file does")
        ->check(CLI::Validator(wrongRange, ""))
        ->type_name("FROM-TO")
        ->group(optionGroup::input);
    const auto add = [&command](const char* name, std::string& value, const char* about,
                                std::string (*wrong)(const std::string&), const char* type) {
        command.add_option(name, value, about)
            ->check(CLI::Validator(wrong, ""))
            ->type_name(type)
            ->group(optionGroup::choice);
    };
    add("--from", from,
        "Only from this message on: its number in the input (17), the time that messages carry as "
        "'rtcm2 list' shows it (30:15), or the time at which it was received, in UTC (14:30:15 or "
        "2026-11-23T14:30:15Z); with --date the last two, too, are times that messages carry. A "
        "time without a date is the first such one in the input, or one up to ten minutes before "
        "it",
        wrongBound, "WHERE");
    const bool writesForm = command.get_option_no_throw("--to") != nullptr;
    add(writesForm ? "--until" : "--until,--to", until,
        "Only up to the message of this number, or before this time, written as for --from",
        wrongBound, "WHERE");
    add("--date", date,
        "The hour in which the input begins (2026-11-23T14), or the time, of which messages carry "
        "only minutes and seconds",
        wrongDate, "DATE");
}

void PartOptions::requireOneBeginning(const std::vector<std::string>& inputs) const
{
    if (!date.empty() && inputs.size() > 1) {
        throw UsageError{"--date tells when one input begins: name one only"};
    }
}

WindowOptions PartOptions::window() const
{
    WindowOptions window;
    const bool hasDate = !date.empty();
    if (hasDate) {
        window.date = dateOf(date);
    }
    if (!from.empty()) {
        window.from = *boundOf(from, hasDate);
    }
    if (!until.empty()) {
        window.until = *boundOf(until, hasDate);
    }
    return window;
}

std::optional<ByteRange> PartOptions::bytesOf(const std::vector<std::string>& inputs) const
{
    if (range.empty()) {
        return std::nullopt;
    }
    for (const std::string& input : inputs) {
        if (input == "-" || isLiveInput(input)) {
            throw UsageError{
                "--range needs a file: " + (input == "-" ? "standard input" : printable(input)) +
                " can only be read from its beginning"};
        }
    }
    return rangeOf(range);
}
