#include "check/Wanted.h"
#include "framing/Header.h"

#include <charconv>
#include <cmath>

namespace {

std::optional<double> realOf(std::string_view text)
{
    double number = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isWhole = result.ec == std::errc() && result.ptr == text.data() + text.size();
    return isWhole && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

std::optional<double> secondsOf(std::string_view text)
{
    struct {
        std::string_view unit;
        double seconds;
    } const units[] = {{"min", 60}, {"s", 1}};
    for (const auto& [unit, seconds] : units) {
        if (text.size() > unit.size() && text.substr(text.size() - unit.size()) == unit) {
            const auto number = realOf(text.substr(0, text.size() - unit.size()));
            return number && *number > 0 ? std::optional(*number * seconds) : std::nullopt;
        }
    }
    return std::nullopt;
}

// Types of no kind have a number all the same.
std::optional<unsigned> typeOf(const FormatModel& model, const std::string& text)
{
    const KindModel* const kind = model.kind(text);
    if (kind != nullptr && kind->typeNumber >= 0) {
        return static_cast<unsigned>(kind->typeNumber);
    }
    const auto number = realOf(text);
    const bool isType =
        number && *number >= 0 && *number < framing::messageTypes && *number == std::floor(*number);
    return isType ? std::optional(static_cast<unsigned>(*number)) : std::nullopt;
}

// So near the centre of the earth there is no station, so these are degrees.
bool isGeodetic(const Cartesian& given)
{
    constexpr double northPole = 90;
    constexpr double wholeCircle = 360;
    constexpr double highest = 1e6;    // metres
    return std::abs(given[0]) <= northPole && std::abs(given[1]) <= wholeCircle &&
           std::abs(given[2]) <= highest;
}

}    // namespace

ExpectedType expectedType(const FormatModel& model, const std::string& text)
{
    const std::size_t colon = text.rfind(':');
    const std::string name = text.substr(0, colon);
    const auto type = typeOf(model, name);
    const auto seconds =
        colon == text.npos ? std::nullopt : secondsOf(std::string_view(text).substr(colon + 1));
    if (!type) {
        throw WantedError{"'" + name +
                          "' in --expect is no type of message ('rtcm2 describe' lists "
                          "them)"};
    }
    if (!seconds) {
        throw WantedError{"'" + text +
                          "' in --expect names no time; write it like 1:0.5s or 3:1min"};
    }
    return {*type, "type " + std::to_string(*type), *seconds};
}

Cartesian positionOf(const std::string& text)
{
    std::vector<std::optional<double>> numbers;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find(',', begin), text.size());
        numbers.push_back(realOf(std::string_view(text).substr(begin, end - begin)));
        begin = end + 1;
    }
    if (numbers.size() != 3 || !numbers[0] || !numbers[1] || !numbers[2]) {
        throw WantedError{"'" + text +
                          "' in --position is no point; write it as X,Y,Z in metres or as "
                          "latitude,longitude,height in degrees and metres"};
    }
    const Cartesian given = {*numbers[0], *numbers[1], *numbers[2]};
    return isGeodetic(given) ? cartesianOf({given[0], given[1], given[2]}) : given;
}
