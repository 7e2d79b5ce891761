#include "commands/PartOptions.h"

#include "base/Terminal.h"
#include "commands/Command.h"
#include "commands/CommonOptions.h"
#include "sources/Sources.h"

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
