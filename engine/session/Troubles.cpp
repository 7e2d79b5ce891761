#include "session/Troubles.h"

#include "framing/Header.h"
#include "session/StationId.h"

#include <algorithm>
#include <cctype>
#include <optional>
#include <string_view>

namespace {

constexpr std::uint64_t toldOneByOne = 10;
constexpr int noType = -1;

std::optional<framing::Header> headerOf(const Found& found)
{
    const bool isWhole = found.isShort || found.what == Found::What::unknownType ||
                         found.what == Found::What::misfit;
    return isWhole && found.bytes.size() >= framing::headerBytes
               ? std::optional(framing::headerOf(found.bytes))
               : std::nullopt;
}

// "4,311"
std::string grouped(std::uint64_t number)
{
    std::string text = std::to_string(number);
    for (std::size_t end = text.size(); end > 3; end -= 3) {
        text.insert(end - 3, 1, ',');
    }
    return text;
}

std::string sumOf(Found::What what, int type, std::uint64_t count)
{
    const std::string messages = count == 1 ? " more message" : " more messages";
    const std::string number = std::to_string(type);
    switch (what) {
    case Found::What::unknownType:
        return grouped(count) + messages + " of unknown type " + number;
    case Found::What::misfit:
        return grouped(count) + messages + " of type " + number + " whose content does not fit";
    default:
        return grouped(count) + (count == 1 ? " more damaged message" : " more damaged messages");
    }
}

// Takes words off a text where they stand at its beginning or its end.
bool takeFront(std::string_view& text, std::string_view words)
{
    const bool stands = text.starts_with(words);
    text.remove_prefix(stands ? words.size() : 0);
    return stands;
}

bool takeBack(std::string_view& text, std::string_view words)
{
    const bool stands = text.ends_with(words);
    text.remove_suffix(stands ? words.size() : 0);
    return stands;
}

std::string upper(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return text;
}

// The field that an error is named after: "DGNSS_PRC".
std::string fieldOf(const FormatModel& model, std::string_view name)
{
    for (const auto& kind : model.kinds()) {
        std::string_view rest = name;
        if (!takeFront(rest, upper(kind->row->name)) || !takeFront(rest, "_")) {
            continue;
        }
        for (const FieldModel& field : kind->fields) {
            if (upper(field.row->name) == rest) {
                return field.name;
            }
        }
    }
    return "a field";
}

// What an error of the decoder says, by its name.
std::string misfitText(const FormatModel& model, std::int32_t result)
{
    std::string_view name = RTCM2_error_to_string(result);
    takeFront(name, "RTCM2_ERR_");
    if (takeBack(name, "_EXT_BUFFER_OVERFLOW")) {
        return "its content ends early (" + fieldOf(model, name) + " does not fit)";
    }
    if (takeBack(name, "_INT_BUFFER_OVERFLOW")) {
        return "its content does not fit (" + fieldOf(model, name) + " is longer than it may be)";
    }
    if (takeBack(name, "_INTERNAL")) {
        return "there is not enough memory for its content";
    }
    return "its content does not fit its type";
}

}    // namespace

void Troubles::add(const Found& found)
{
    const auto header = headerOf(found);
    const Sort sort{found.what, header ? static_cast<int>(header->type) : noType};
    if (++counts[sort] <= toldOneByOne) {
        tell(lineOf(found));
    }
}

void Troubles::endInput()
{
    for (const auto& [sort, count] : counts) {
        if (count > toldOneByOne) {
            tell(input + ": and " + sumOf(sort.first, sort.second, count - toldOneByOne));
        }
    }
    counts.clear();
}

std::string Troubles::lineOf(const Found& found) const
{
    std::string line = input + ": message " + std::to_string(found.number) + " at byte " +
                       std::to_string(found.begin);
    if (const auto header = headerOf(found)) {
        line += ", " + StationId(header->station, *found.envelope).text() + ", type " +
                std::to_string(header->type);
    } else if (found.envelope->sender && found.what != Found::What::damaged) {
        line += ", MMSI " + std::to_string(found.envelope->sender->mmsi);
    }
    return line + ": " + reasonOf(formatModel, found);
}

std::string Troubles::reasonOf(const FormatModel& model, const Found& found)
{
    if (found.isShort && found.hasRecord()) {
        return "shorter than it says, only " +
               std::to_string(found.bytes.size() / framing::bytesPerWord - framing::headerWords) +
               " data words came; what came whole is used";
    }
    switch (found.what) {
    case Found::What::damaged:
        return "damaged message: " + found.text;
    case Found::What::truncated:
        return "truncated message: " + found.text;
    case Found::What::unknownType:
        return "unknown type";
    default:
        return misfitText(model, found.result);
    }
}
