#include "forms/HexReader.h"

#include "forms/TimeLabel.h"

#include <algorithm>
#include <array>
#include <cassert>

namespace {

constexpr std::int8_t blank = -1;
constexpr std::int8_t other = -2;

// The value of each hexadecimal digit.
constexpr std::array<std::int8_t, 256> makeDigitTable()
{
    std::array<std::int8_t, 256> table{};
    table.fill(other);
    for (std::int8_t value = 0; value < 10; ++value) {
        table[static_cast<std::size_t>('0' + value)] = value;
    }
    for (std::int8_t value = 10; value < 16; ++value) {
        table[static_cast<std::size_t>('a' + value - 10)] = value;
        table[static_cast<std::size_t>('A' + value - 10)] = value;
    }
    for (const char c : {' ', '\t', '\r', '\v', '\f'}) {
        table[static_cast<std::size_t>(c)] = blank;
    }
    return table;
}

constexpr std::array<std::int8_t, 256> digitTable = makeDigitTable();

}    // namespace

void HexReader::push(std::span<const std::uint8_t> bytes)
{
    assert(pending.empty() && "bytes pushed before are still unread");
    pending = bytes;
}

const framing::Frame* HexReader::next()
{
    while (!pending.empty()) {
        const std::uint8_t character = pending.front();
        pending = pending.subspan(1);
        if (character != '\n') {
            take(character);
            ++offset;
        } else {
            ++offset;
            if (endLine(false)) {
                return &frame;
            }
        }
    }
    return finished && endLine(true) ? &frame : nullptr;
}

void HexReader::take(std::uint8_t character)
{
    const std::int8_t digit = digitTable[character];
    if (const std::uint64_t place = offset - line.begin; place < label.size()) {
        label[place] = static_cast<char>(character);
    }
    if (digit == blank) {
        takeBlank();
        return;
    }
    if (line.isEmpty) {
        line.isEmpty = false;
        line.isComment = character == '#';
        line.first = offset;
    }
    if (!line.inWord) {
        beginWord();
    }
    line.last = offset + 1;
    if (digit >= 0) {
        takeDigit(digit);
    } else if (line.afterZero && (character == 'x' || character == 'X')) {
        --line.digits;
        line.afterZero = false;
    } else {
        if (!line.hasStranger) {
            line.hasStranger = true;
            line.stranger = offset;
        }
        beginLabel();
    }
}

// The first byte of a message is in one word.
void HexReader::takeBlank()
{
    if (line.digits == 1) {
        line.digits = 0;
    }
    line.inWord = false;
    line.afterZero = false;
}

void HexReader::beginWord()
{
    line.inWord = true;
    line.inLabel = false;
    if (line.digits == 0) {
        line.message = offset;
    }
}

// What was read of the line so far is no message, nor is the rest of the word.
void HexReader::beginLabel()
{
    line.inLabel = true;
    line.afterZero = false;
    line.digits = 0;
}

void HexReader::takeDigit(int digit)
{
    if (line.inLabel) {
        return;
    }
    const std::uint64_t byte = line.digits / 2;
    const bool isFirst = line.digits % 2 == 0;
    if (byte < frame.storage.size()) {
        std::uint8_t& target = frame.storage[byte];
        target = static_cast<std::uint8_t>(isFirst ? digit << 4 : target | digit);
    }
    line.afterZero = isFirst && digit == 0;
    ++line.digits;
    if (line.digits == 2 && frame.storage[0] != framing::preamble) {
        beginLabel();
    }
}

// True when the line gives a frame.
bool HexReader::endLine(bool inputEnded)
{
    const bool hasFrame = !line.isEmpty && !line.isComment;
    const bool isMessage = hasFrame && fillFrame(inputEnded);
    if (!isMessage) {
        skipped += offset - line.begin;
    }
    line = Line{.begin = offset};
    return hasFrame;
}

// True when the line is a message.
bool HexReader::fillFrame(bool inputEnded)
{
    const std::span<const std::uint8_t> bytes = lineBytes();
    problem = findProblem();
    ++frame.number;
    frame.beginOffset = line.digits > 0 ? line.message : line.first;
    frame.endOffset = line.last;
    frame.kind = framing::Frame::Kind::message;
    frame.wordCount = bytes.size() / framing::bytesPerWord;
    told.received = timeOfLabel();
    if (problem.empty()) {
        return true;
    }
    const bool isShort = bytes.size() < framing::headerWords * framing::bytesPerWord ||
                         bytes.size() < framing::declaredWords(bytes) * framing::bytesPerWord;
    if (inputEnded && line.digits > 0 && isShort) {
        frame.kind = framing::Frame::Kind::truncated;
    } else {
        frame.kind = framing::Frame::Kind::damaged;
        frame.wordCount = 0;
    }
    return false;
}

std::string HexReader::findProblem() const
{
    const std::span<const std::uint8_t> bytes = lineBytes();
    if (line.digits == 0) {
        return line.hasStranger ? "no hexadecimal digit at byte " + std::to_string(line.stranger)
                                : "does not begin with the preamble, 66";
    }
    if (line.digits % 2 != 0) {
        return "odd number of hexadecimal digits";
    }
    if (bytes.size() < framing::headerWords * framing::bytesPerWord) {
        return "too short for a header";
    }
    const std::size_t declared = framing::declaredWords(bytes) * framing::bytesPerWord;
    if (line.digits / 2 != declared) {
        return "has " + std::to_string(line.digits / 2) + " bytes, but its header declares " +
               std::to_string(declared);
    }
    return {};
}

std::optional<std::int64_t> HexReader::timeOfLabel() const
{
    const std::uint64_t size = line.digits > 0 ? line.message - line.begin : 0;
    const bool isCut = size > label.size();
    const std::string_view text(label.data(), isCut ? label.size() : size);
    return size == 0 ? std::nullopt : timeInLabel(isCut ? text.substr(0, text.rfind(' ')) : text);
}

// The bytes of the line as far as a message can have them.
std::span<const std::uint8_t> HexReader::lineBytes() const
{
    const std::uint64_t count = std::min<std::uint64_t>(line.digits / 2, frame.storage.size());
    return std::span(frame.storage).first(static_cast<std::size_t>(count));
}
