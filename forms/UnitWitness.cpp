#include "forms/UnitWitness.h"

#include "forms/UnitReader.h"

#include <algorithm>

namespace {

// As many messages in a row are no accident, from the first byte of an input on and elsewhere,
// where programs and tables have rows of their own.
constexpr unsigned sureFromStart = 4;
constexpr unsigned sureElsewhere = 8;

constexpr unsigned longestLineEnd = 2;
constexpr unsigned longestWait = 100;    // in units of 0.6 s

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
    if (place > 1 && place - 1 <= lastEnd) {
        takeLineEnd(place);
        close(place);
    }
}

// A line end belongs to the row before it.
void UnitWitness::takeLineEnd(std::uint64_t place)
{
    const Row& last = rows[(place - 1) % rowCount];
    if (last.messages > 0 && last.end == place - 1 && last.lineEnds < longestLineEnd &&
        form.isLineEnd(bytes[place - 1])) {
        Row row = last;
        row.end = place;
        ++row.lineEnds;
        keep(row);
    }
}

// A message that begins at a place, in a row with those that end there.
void UnitWitness::begin(std::uint64_t place)
{
    const std::uint8_t* const header = &bytes[place];
    const std::size_t words = form.words(header);
    Row row{.end = place + words * form.size,
            .begin = place,
            .messages = 1,
            .first = place,
            .header = framing::headerOf(form.data(header), form.data(header + form.size))};
    const Row& last = rows[place % rowCount];
    if (last.messages > 0 && last.end == place && continues(last, row)) {
        row.messages += last.messages;
        row.words += last.words;
        row.first = last.first;
    }
    keep(row);
}

bool UnitWitness::continues(const Row& row, const Row& next)
{
    if (row.first == 0) {
        return true;
    }
    return row.header.station == next.header.station &&
           framing::waitBetween(row.header, next.header) <= longestWait &&
           next.header.sequence == (row.header.sequence + 1) % 8;
}

// Of several rows that end at the same place, the longest counts.
void UnitWitness::keep(const Row& row)
{
    Row& kept = rows[row.end % rowCount];
    lastEnd = std::max(lastEnd, row.end);
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
    if (row.lineEnds == 0) {
        row.words += wordsThatTell((place - row.begin) / form.size, [&](std::size_t word) {
            return form.data(&bytes[row.begin + word * form.size]);
        });
    }
    judge(row);
}

void UnitWitness::judge(const Row& row)
{
    longestRow = std::max(longestRow, row.messages);
    if (row.first == 0) {
        startRow = row;
    }
    if (certain) {
        return;
    }
    const unsigned sureRow = row.first == 0 ? sureFromStart : sureElsewhere;
    certain = vouches() ? isNoAccident(row.words, row.end) : row.messages >= sureRow;
    if (certain && !vouches() && startRow.messages < 2) {
        before = row.first;
    }
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
    fitting = !vouches() && startRow.messages > 0 && (startRow.end == bytes.size() || endsCutOff());
}

// Whether the input ends inside a message that begins where the row from its first byte on ends.
bool UnitWitness::endsCutOff() const
{
    const std::size_t left = bytes.size() - startRow.end;
    const std::uint8_t* const header = &bytes[startRow.end];
    if (left >= form.preambleBytes && !form.hasPreamble(header)) {
        return false;
    }
    return left < headerBytes() || left < form.words(header) * form.size;
}

std::unique_ptr<PacketReader> UnitWitness::makeReader(std::uint64_t firstByte) const
{
    return std::make_unique<UnitReader>(form, firstByte);
}
