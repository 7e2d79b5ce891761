#include "commands/encode/MessageEncoder.h"

#include "base/Names.h"
#include "commands/encode/JsonValue.h"
#include "commands/encode/MainKind.h"
#include "framing/Frame.h"

#include <algorithm>

namespace {

using rapidjson::Value;

constexpr unsigned headerBits = framing::headerBytes * 8;
constexpr unsigned bitsPerWord = framing::bytesPerWord * 8;    // that are not parity
constexpr unsigned mostWords = framing::maxDataWords;

std::int64_t wordsIn(const void* record)
{
    std::int64_t words = 0;
    RTCM2_read_integer(record, &wordsOf(*RTCM2_kind_of(record)), 0, &words);
    return words;
}

// "No_Of_Data_Words: ", before what is wrong with it.
std::string nameOfWords(const void* record)
{
    return identifierOf(labelOf(wordsOf(*RTCM2_kind_of(record)))) + ": ";
}

}    // namespace

Problem MessageEncoder::encode(const Value& object)
{
    // What is given for a field twice is found with its name.
    if (const auto key = repeatedKey(object, "fields")) {
        return quoted(*key) + ": stands twice in an object";
    }
    const Value* const fields = find(object, "fields");
    return fields != nullptr ? takeFields(object, *fields) : takeHex(object);
}

Problem MessageEncoder::takeHex(const Value& object)
{
    const Value* const hex = find(object, "hex");
    if (hex == nullptr) {
        return "fields: is missing";
    }
    if (!hex->IsString()) {
        return "hex: has to be a text";
    }
    bytes = bytesOfHex(textOf(*hex));
    return bytes.empty() ? "hex: is no row of bytes of two hexadecimal digits each" : "";
}

Problem MessageEncoder::takeFields(const Value& object, const Value& fields)
{
    const Value* const name = find(object, "kind");
    if (name == nullptr || !name->IsString()) {
        return name == nullptr ? "kind: is missing" : "kind: has to be a text";
    }
    const RTCM2_kind_s* const kind = findMainKind(textOf(*name));
    if (kind == nullptr) {
        return "kind: " + noMainKind(textOf(*name));
    }
    fill = find(object, "fill");
    const Problem problem =
        fields.IsObject() ? takeMembers(*kind, fields) : "fields: has to be an object";
    return problem.empty() ? problem : std::string(textOf(*name)) + ": " + problem;
}

// Takes the number of data words that is given, or the smallest that works. Where none does, what
// is wrong with the smallest that has room for everything is what people want to hear.
Problem MessageEncoder::takeMembers(const RTCM2_kind_s& kind, const Value& fields)
{
    GivenRecord given(kind);
    if (Problem problem = given.read(fields); !problem.empty()) {
        return problem;
    }
    // A number that is given is written with all the rest.
    const bool isSearch = given.given(wordsOf(kind)) == nullptr;
    const unsigned most = isSearch ? mostWords : 0;
    Problem mistake;
    Problem noRoom = "no number of data words lets all that is given stand in one message";
    for (unsigned number = 0; number <= most; number = std::max(number + 1, wordsFilled())) {
        contentBits = 0;
        record.reset(new RTCM2_message_s());
        RTCM2_init_record(kind.kind, record.get());
        RTCM2_write_integer(record.get(), &wordsOf(kind), 0, number);
        if (isSearch && !given.hasPlaceFor(record.get(), wordsOf(kind))) {
            continue;
        }
        Problem problem = given.write(record.get());
        if (problem.empty()) {
            noRoom = pack();
            if (!noRoom.empty()) {
                continue;
            }
            problem = finish(given);
        }
        if (problem.empty()) {
            return {};
        }
        mistake = mistake.empty() ? std::move(problem) : mistake;
    }
    return mistake.empty() ? noRoom : mistake;
}

// Those that the content takes, which other numbers of words make no shorter.
unsigned MessageEncoder::wordsFilled() const
{
    return (contentBits - std::min(contentBits, headerBits) + bitsPerWord - 1) / bitsPerWord;
}

// Encodes the record; all bits behind it are zero.
Problem MessageEncoder::pack()
{
    bytes.assign(RTCM2_PACKED_ROOM, 0);
    const std::int32_t result =
        RTCM2_encode_record(record.get(), bytes.data(), RTCM2_PACKED_ROOM, &contentBits);
    const auto words = static_cast<unsigned>(wordsIn(record.get()));
    const unsigned room = words * bitsPerWord;
    if (result < 0 || contentBits > headerBits + room) {
        return nameOfWords(record.get()) + std::to_string(words) + " data words hold " +
               std::to_string(room) + " bits, not the " + (result < 0 ? "more than " : "") +
               std::to_string(contentBits - headerBits) + " bits of what is given";
    }
    bytes.resize((headerBits + room) / 8);
    return {};
}

// Decodes what was encoded, and compares.
Problem MessageEncoder::finish(const GivenRecord& given)
{
    const Record decoded(new RTCM2_message_s());
    std::uint32_t end = 0;
    const std::int32_t result = RTCM2_decode_record(
        record->kind, bytes.data(), static_cast<std::uint16_t>(bytes.size()), &end, decoded.get());
    if (result < 0) {
        return nameOfWords(record.get()) + "with " + std::to_string(wordsIn(record.get())) +
               " nobody could decode the message (" + RTCM2_error_to_string(result) + ")";
    }
    Problem problem = given.compare(decoded.get());
    return problem.empty() ? writeFill() : problem;
}

Problem MessageEncoder::writeFill()
{
    if (fill != nullptr && !fill->IsString()) {
        return "fill: has to be a text";
    }
    const std::string_view given = fill != nullptr ? textOf(*fill) : std::string_view();
    if (given.find_first_not_of("01") != std::string_view::npos) {
        return "fill: has other characters than 0 and 1";
    }
    const std::size_t count = 8 * bytes.size() - contentBits;
    if (fill != nullptr && given.size() != count) {
        return "fill: has " + std::to_string(given.size()) +
               " bits where the data words have room for " + std::to_string(count);
    }
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t bit = contentBits + i;
        if (fill != nullptr ? given[i] == '1' : i % 2 == 0) {
            bytes[bit / 8] = static_cast<std::uint8_t>(bytes[bit / 8] | 0x80U >> bit % 8);
        }
    }
    return {};
}
