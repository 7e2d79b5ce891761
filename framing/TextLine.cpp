#include "framing/TextLine.h"

namespace framing {
namespace {

bool isLetter(std::uint8_t byte)
{
    const std::uint8_t upper = byte & 0xDFU;
    return upper >= 'A' && upper <= 'Z';
}

}    // namespace

void Gap::add(std::uint8_t byte)
{
    const bool isText = (byte >= 0x20 && byte < 0x40) || byte == '\t';
    if (byte == '\r' || byte == '\n') {
        lineEnd = true;
        textAfter = false;
        sentence = false;
    } else if (isText) {
        (lineEnd ? textAfter : text) = true;
    } else if (!lineEnd) {
        foreign = true;
    }
    sentence |= byte == '$' || byte == '!';
}

// What stands before a line end there belongs to the line before.
void TextLine::beginBehind(const Gap& gap)
{
    gaps_ = (gap.lineEnd ? gap.textAfter : gap.text) ? 1 : 0;
    sentence_ = gap.sentence;
}

void TextLine::add(std::uint8_t sextetByte)
{
    constexpr std::uint8_t del = 0x7F;
    onlyLetters_ &= isLetter(sextetByte);
    const bool fits = onlyLetters_ || (sentence_ && sextetByte != del);
    ++end_;
    if (!fits || end_ - begin_ > longestLine) {
        state_ = State::none;
    }
}

void TextLine::add(const Gap& gap)
{
    gaps_ += gap.text ? 1 : 0;
    if (gap.foreign) {
        state_ = State::none;
    } else if (gap.lineEnd) {
        endHere();
    }
}

void TextLine::endHere()
{
    const bool enough = onlyLetters_ ? gaps_ > 0 : gaps_ >= gapsOfSentence;
    state_ = enough && end_ > begin_ ? State::text : State::none;
}

}    // namespace framing
