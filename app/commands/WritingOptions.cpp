#include "commands/WritingOptions.h"

#include "commands/Command.h"
#include "commands/CommonOptions.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <optional>

namespace {

constexpr std::uint32_t mostMmsi = 999'999'999;

template <class Number>
std::optional<Number> numberOf(const std::string& text)
{
    Number number{};
    const char* const end = text.data() + text.size();
    const auto [last, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && last == end ? std::optional(number) : std::nullopt;
}

// Degrees up to the limit, in the units of AIS.
std::optional<std::int32_t> unitsOf(const std::string& text, double limit)
{
    const auto degrees = numberOf<double>(text);
    return degrees && std::abs(*degrees) <= limit
               ? std::optional(
                     static_cast<std::int32_t>(std::lround(*degrees * AisSender::unitsPerDegree)))
               : std::nullopt;
}

void setPosition(SenderDefaults& defaults, const std::string& text)
{
    constexpr double mostLatitude = 90;
    constexpr double mostLongitude = 180;
    const std::size_t comma = text.find(',');
    const auto latitude = unitsOf(text.substr(0, comma), mostLatitude);
    const auto longitude =
        comma == text.npos ? std::nullopt : unitsOf(text.substr(comma + 1), mostLongitude);
    if (!latitude || !longitude) {
        throw UsageError{"--position: '" + text +
                         "' is no position: it takes latitude and longitude in degrees with a "
                         "comma between them, such as 54.32,-10.14"};
    }
    defaults.latitude = *latitude;
    defaults.longitude = *longitude;
}

std::uint32_t mmsiOf(const std::vector<std::string>& given)
{
    const auto number = given.size() == 1 ? numberOf<std::uint32_t>(given.front()) : std::nullopt;
    if (!number || *number == 0 || *number > mostMmsi) {
        throw UsageError{"--mmsi: with --to " + std::string(nameOf(InputForm::aivdm)) +
                         " it is the sender's MMSI, one number of up to nine digits"};
    }
    return *number;
}

}    // namespace

void WritingOptions::declareForm(CLI::App& command, const std::string& defaultForm)
{
    form = defaultForm;
    CLI::Option* const option =
        command.add_option("--to", form, "Form of the output: " + aboutForms(false))
            ->check(CLI::IsMember(namesOfForms(false)))
            ->group(optionGroup::output);
    if (defaultForm.empty()) {
        option->required();
    } else {
        option->capture_default_str();
    }
}

void WritingOptions::declarePosition(CLI::App& command)
{
    command
        .add_option("--position", position,
                    "With --to aivdm: where the sender stands, in degrees, for messages that do "
                    "not tell it; without it, no position is written")
        ->type_name("LAT,LON")
        ->group(optionGroup::output);
}

void WritingOptions::declareSender(CLI::App& command)
{
    declarePosition(command);
    command.get_option("--mmsi")->description(
        "Only messages that these AIS stations sent; several with commas between them. With --to "
        "aivdm it is one number, and also the sender of all messages that did not come by AIS");
}

SenderDefaults WritingOptions::defaultsFor(ReadingOptions& reading) const
{
    const SenderDefaults result = defaults(reading.filter.senders);
    const InputForm from = *inputFormOf(reading.form);
    if (needsSender() && !result.mmsi && from != InputForm::automatic && from != to()) {
        throw UsageError{"--to " + form + " needs the MMSI of the sender: --mmsi"};
    }
    reading.filter.takesSenderless = needsSender();
    return result;
}

std::string withoutSenderText(std::uint64_t messages)
{
    return std::to_string(messages) + (messages == 1 ? " message was" : " messages were") +
           " left out that did not come by AIS; --mmsi names a sender for such";
}

SenderDefaults WritingOptions::defaults(const std::vector<std::string>& mmsi) const
{
    SenderDefaults defaults;
    if (!needsSender()) {
        if (!position.empty()) {
            throw UsageError{"--position goes with --to aivdm only"};
        }
        return defaults;
    }
    if (!mmsi.empty()) {
        defaults.mmsi = mmsiOf(mmsi);
    }
    if (!position.empty()) {
        setPosition(defaults, position);
    }
    return defaults;
}
