#include "forms/UnitReader.h"

#include <algorithm>
#include <cassert>
#include <cstring>

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

std::string UnitReader::damage() const
{
    return frame.failedWord == 0 ? "no message begins here"
                                 : "bad parity in word " + std::to_string(frame.failedWord);
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
    skipLineEnd();
    if (available() < form.preambleBytes) {
        return Step::starve;
    }
    if (!form.hasPreamble(at(begin))) {
        return fail();
    }
    switch (room()) {
    case Room::enough:
        return isGood() ? accept() : fail();
    case Room::missing:
        return truncate();
    case Room::unknown:
        break;
    }
    return Step::starve;
}

// One line end, of one character or two, behind the last message or first of all.
void UnitReader::skipLineEnd()
{
    while (available() > 0 && begin - lastEnd < longestLineEnd && form.isLineEnd(*at(begin))) {
        ++begin;
    }
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
        const Room next = found == Room::enough ? roomBehind() : found;
        if (next == Room::unknown) {
            return Step::starve;
        }
        if (next == Room::enough && begin + wordsWanted * form.size > lastEnd && isGood()) {
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
        wordsWanted = form.words(at(begin));
    }
    if (available() >= wordsWanted * form.size) {
        return Room::enough;
    }
    return inputEnded() ? Room::missing : Room::unknown;
}

std::size_t UnitReader::goodWords() const
{
    return form.goodWords({at(begin), wordsWanted * form.size});
}

// Whether there is room for another message behind the words wanted: enough where parity vouches
// for them, or where a preamble or the end of the input follows.
UnitReader::Room UnitReader::roomBehind() const
{
    const std::size_t bytes = wordsWanted * form.size;
    std::size_t behind = bytes;
    while (behind < available() && behind < bytes + longestLineEnd &&
           form.isLineEnd(*at(begin + behind))) {
        ++behind;
    }
    if (form.goodWords != nullptr || (available() < behind + form.preambleBytes && inputEnded())) {
        return Room::enough;
    }
    if (available() < behind + form.preambleBytes) {
        return Room::unknown;
    }
    return form.hasPreamble(at(begin + behind)) ? Room::enough : Room::missing;
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
    const bool isWhole = form.hasPreamble(at(begin));
    const std::size_t words = isWhole ? goodWords() : 0;
    deliver(framing::Frame::Kind::damaged, words,
            isWhole ? (words + 1) * form.size : form.preambleBytes);
    frame.failedWord = static_cast<std::uint8_t>(isWhole ? words + 1 : 0);
    begin = searchBegin();
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
    frame.failedWord = 0;
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
