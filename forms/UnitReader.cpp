#include "forms/UnitReader.h"

#include <algorithm>
#include <cassert>
#include <cstring>

namespace {

constexpr unsigned parityBits = 6;
constexpr std::uint32_t dataMask = 0xFFFFFF;

std::uint32_t dataOfPacked(const std::uint8_t* unit)
{
    return static_cast<std::uint32_t>(unit[0] << 16 | unit[1] << 8 | unit[2]);
}

std::uint32_t dataOfRecorded(const std::uint8_t* unit)
{
    const std::uint32_t word = static_cast<std::uint32_t>(unit[0] | unit[1] << 8 | unit[2] << 16) |
                               static_cast<std::uint32_t>(unit[3]) << 24;
    return word >> parityBits & dataMask;
}

bool isPackedPreamble(const std::uint8_t* unit)
{
    return unit[0] == framing::preamble;
}

bool isRecordedPreamble(const std::uint8_t* unit)
{
    return dataOfRecorded(unit) >> 16 == framing::preamble;
}

}    // namespace

const UnitForm packedUnits{.name = "packed",
                           .size = framing::bytesPerWord,
                           .preambleBytes = 1,
                           .data = dataOfPacked,
                           .hasPreamble = isPackedPreamble,
                           .isRecording = false};

const UnitForm recordedUnits{.name = "words",
                             .size = 4,
                             .preambleBytes = 4,
                             .data = dataOfRecorded,
                             .hasPreamble = isRecordedPreamble,
                             .isRecording = true};

void UnitReader::push(std::span<const std::uint8_t> bytes)
{
    assert(pending.empty() && "bytes pushed before are still unread");
    pending = bytes;
}

const framing::Frame* UnitReader::next()
{
    for (;;) {
        switch (expected ? take() : search()) {
        case Step::deliver:
            return &frame;
        case Step::again:
            break;
        case Step::starve:
            if (!refill()) {
                conclude();
                return nullptr;
            }
            break;
        }
    }
}

std::span<const std::uint8_t> UnitReader::recorded() const
{
    return form.isRecording ? units : std::span<const std::uint8_t>();
}

ReaderCounters UnitReader::counters() const
{
    return {.bytesRead = end() + pending.size(), .bytesSkipped = skipped, .form = form.name};
}

bool UnitReader::refill()
{
    if (pending.empty()) {
        return false;
    }
    if (filled == window.size()) {
        const std::uint64_t keepFrom = expected ? lastBegin : begin;
        const std::size_t keep = static_cast<std::size_t>(end() - keepFrom);
        std::memmove(window.data(), at(keepFrom), keep);
        windowBegin = keepFrom;
        filled = keep;
    }
    const std::size_t count = std::min(pending.size(), window.size() - filled);
    std::memcpy(&window[filled], pending.data(), count);
    filled += count;
    pending = pending.subspan(count);
    return true;
}

UnitReader::Step UnitReader::take()
{
    if (available() < form.preambleBytes) {
        return Step::starve;
    }
    if (!form.hasPreamble(at(begin))) {
        return fail();
    }
    switch (room()) {
    case Room::enough:
        return accept();
    case Room::missing:
        return truncate();
    case Room::unknown:
        break;
    }
    return Step::starve;
}

UnitReader::Step UnitReader::search()
{
    for (; available() >= form.preambleBytes; ++begin) {
        if (!form.hasPreamble(at(begin))) {
            continue;
        }
        const Room found = room();
        if (found == Room::missing) {
            continue;
        }
        const std::size_t bytes = wordsWanted * form.size;
        if (found == Room::unknown || (available() < bytes + form.preambleBytes && !inputEnded())) {
            return Step::starve;
        }
        if (begin + bytes > lastEnd && isConfirmed()) {
            return accept();
        }
    }
    return Step::starve;
}

// Whether the words that the header at `begin` declares have come in; missing when they never will.
UnitReader::Room UnitReader::room()
{
    wordsWanted = framing::headerWords;
    if (available() >= wordsWanted * form.size) {
        wordsWanted += dataAt(framing::headerWords - 1) >> 3 & 0x1F;
    }
    if (available() >= wordsWanted * form.size) {
        return Room::enough;
    }
    return inputEnded() ? Room::missing : Room::unknown;
}

// Whether what follows the words wanted may follow a message.
bool UnitReader::isConfirmed() const
{
    const std::size_t bytes = wordsWanted * form.size;
    return available() < bytes + form.preambleBytes || form.hasPreamble(at(begin + bytes));
}

UnitReader::Step UnitReader::accept()
{
    const std::size_t bytes = wordsWanted * form.size;
    deliver(framing::Frame::Kind::message, wordsWanted, bytes);
    skipped += std::max(begin, lastEnd) - lastEnd;
    lastBegin = begin;
    lastEnd = begin + bytes;
    begin = lastEnd;
    expected = true;
    return Step::deliver;
}

UnitReader::Step UnitReader::fail()
{
    deliver(framing::Frame::Kind::damaged, 0, form.preambleBytes);
    begin = lastEnd > lastBegin ? lastBegin + 1 : begin + 1;
    expected = false;
    return Step::deliver;
}

UnitReader::Step UnitReader::truncate()
{
    deliver(framing::Frame::Kind::truncated, available() / form.size, available());
    ++begin;
    expected = false;
    return Step::deliver;
}

void UnitReader::deliver(framing::Frame::Kind kind, std::size_t unitCount, std::size_t bytes)
{
    frame.kind = kind;
    ++frame.number;
    frame.beginOffset = begin;
    frame.endOffset = begin + bytes;
    frame.wordCount = unitCount;
    for (std::size_t unit = 0; unit < unitCount; ++unit) {
        const std::uint32_t data = dataAt(unit);
        std::uint8_t* const word = &frame.storage[unit * framing::bytesPerWord];
        word[0] = static_cast<std::uint8_t>(data >> 16);
        word[1] = static_cast<std::uint8_t>(data >> 8);
        word[2] = static_cast<std::uint8_t>(data);
    }
    units = std::span(at(begin), unitCount * form.size);
}

// The input has ended, and nothing more was found in it.
void UnitReader::conclude()
{
    if (inputEnded() && !concluded) {
        concluded = true;
        skipped += end() - lastEnd;
    }
}
