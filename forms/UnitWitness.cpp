#include "forms/UnitWitness.h"

#include "forms/UnitReader.h"

#include <algorithm>

namespace {

// As many messages in a row are no accident.
constexpr unsigned sureRow = 4;

constexpr unsigned longestLineEnd = 2;
constexpr std::uint32_t stationMask = 0x3FF;

bool isPrintable(std::uint8_t byte)
{
    return (byte >= 0x20 && byte < 0x80) || byte == '\n' || byte == '\r' || byte == '\t';
}

}    // namespace

void UnitWitness::look(std::span<const std::uint8_t> seen)
{
    bytes = seen;
    while (lookedAt < seen.size()) {
        lookAt(++lookedAt);
    }
}

// Everything that the bytes before a place can tell.
void UnitWitness::lookAt(std::uint64_t place)
{
    if (place >= headerBytes() && form.hasPreamble(&bytes[place - headerBytes()])) {
        begin(place - headerBytes());
    }
    const Row& before = rows[(place - 1) % rowCount];
    if (before.messages > 0 && before.end == place - 1 && before.lineEnds < longestLineEnd &&
        form.isLineEnd(bytes[place - 1])) {
        Row row = before;
        row.end = place;
        ++row.lineEnds;
        keep(row);
    }
    close(place);
}

// A message that begins at a place, in a row with those that end there.
void UnitWitness::begin(std::uint64_t place)
{
    const std::uint8_t* const header = &bytes[place];
    const std::size_t words = form.words(header);
    const std::uint32_t station = form.data(header) & stationMask;
    const Row& before = rows[place % rowCount];
    Row row{.end = place + words * form.size,
            .begin = place,
            .messages = 1,
            .words = words,
            .station = station,
            .fromStart = place == 0};
    if (before.messages > 0 && before.end == place &&
        (before.fromStart || before.station == station)) {
        row.messages += before.messages;
        row.words += before.words;
        row.fromStart = before.fromStart;
    }
    keep(row);
}

// Of several rows that end at the same place, the longest counts.
void UnitWitness::keep(const Row& row)
{
    Row& kept = rows[row.end % rowCount];
    if (kept.end != row.end || kept.messages < row.messages) {
        kept = row;
    }
}

void UnitWitness::close(std::uint64_t place)
{
    Row& row = rows[place % rowCount];
    if (row.messages == 0 || row.end != place) {
        return;
    }
    if (!isGood(row)) {
        row.messages = 0;
        return;
    }
    longestRow = std::max(longestRow, row.messages);
    if (row.fromStart) {
        startRowEnd = place;
    }
    certain = certain || (vouches() ? isNoAccident(row.words, place) : row.messages >= sureRow);
}

bool UnitWitness::isGood(const Row& row) const
{
    const auto message = bytes.subspan(row.begin, row.end - row.begin - row.lineEnds);
    if (form.goodWords != nullptr) {
        return form.goodWords(message) * form.size == message.size();
    }
    return !std::all_of(message.begin(), message.end(), isPrintable);
}

void UnitWitness::finish()
{
    fitting = !vouches() && startRowEnd > 0 && (startRowEnd == bytes.size() || endsCutOff());
}

// Whether the input ends inside a message that begins where the row from its first byte on ends.
bool UnitWitness::endsCutOff() const
{
    const std::size_t left = bytes.size() - startRowEnd;
    const std::uint8_t* const header = &bytes[startRowEnd];
    if (left >= form.preambleBytes && !form.hasPreamble(header)) {
        return false;
    }
    return left < headerBytes() || left < form.words(header) * form.size;
}

std::unique_ptr<PacketReader> UnitWitness::makeReader() const
{
    return std::make_unique<UnitReader>(form);
}
