#include "commands/check/WantedOptions.h"

#include "base/PlainText.h"
#include "commands/Command.h"

namespace {

std::vector<unsigned> numbersOf(const std::vector<std::string>& texts, const char* what)
{
    std::vector<unsigned> numbers;
    for (const std::string& text : texts) {
        const auto number = numberIn<unsigned>(text);
        if (!number) {
            throw UsageError{what + (" '" + text) + "' is not a number"};
        }
        numbers.push_back(*number);
    }
    return numbers;
}

}    // namespace

void WantedOptions::declare(CLI::App& command, FilterOptions& filter)
{
    command.add_option("--station", filter.stations, "Look at these stations only")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->type_name("NUMBER");
    command.add_option("--mmsi", filter.senders, "Look at what these AIS stations sent only")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->type_name("NUMBER");
    command
        .add_option("--expect", expected,
                    "Types that have to come, and how often: 1:0.5s,3:1min. Types by number or "
                    "name, times in s or min")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->type_name("TYPE:TIME");
    command
        .add_option("--position", position,
                    "Where the points of the stations have to be: X,Y,Z in metres, earth-centred "
                    "and earth-fixed, or latitude,longitude,height in degrees and metres")
        ->type_name("POINT");
    command.add_option("--tolerance", tolerance, "Metres that a point may be away from --position")
        ->check(CLI::Range(0.0, 1e7))
        ->type_name("METRES")
        ->capture_default_str();
}

Wanted WantedOptions::wanted(const FormatModel& model, const FilterOptions& filter,
                             bool withTimes) const
{
    Wanted result{.tolerance = tolerance,
                  .stations = numbersOf(filter.stations, "station"),
                  .senders = numbersOf(filter.senders, "MMSI"),
                  .times = withTimes};
    try {
        for (const std::string& text : expected) {
            result.types.push_back(expectedType(model, text));
        }
        if (!position.empty()) {
            result.position = positionOf(position);
        }
    } catch (const WantedError& error) {
        throw UsageError{error.text};
    }
    return result;
}
