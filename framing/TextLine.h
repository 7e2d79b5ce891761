// Lines of text between messages. Their letters have the form of a stream's bytes.
#pragma once

#include <cstdint>

namespace framing {

// What is known of bytes that a stream does not have, between two runs of those that it has.
struct Gap {
    bool text = false;         // characters 0x20 to 0x3F or tabs
    bool foreign = false;      // bytes that no text has
    bool lineEnd = false;      // the two above stand before the first line end
    bool textAfter = false;    // text behind the last line end
    bool sentence = false;     // there or in the whole, the `$` or `!` of a sentence

    void add(std::uint8_t byte);
};

// A line that is being looked at, as the sextets that it would have. It consists of letters and of
// at least one character that is no sextet, and ends with a carriage return or a line feed. A
// sentence may have any characters, but at least three times some that are no sextets.
class TextLine {
public:
    explicit TextLine(std::uint64_t begin) : begin_(begin), end_(begin) {}

    void beginBehind(const Gap& gap);
    void add(std::uint8_t sextetByte);
    void add(const Gap& gap);
    void endHere();

    std::uint64_t begin() const { return begin_; }
    std::uint64_t end() const { return end_; }
    bool isOpen() const { return state_ == State::open; }    // more bytes must say
    bool isText() const { return state_ == State::text; }

private:
    enum class State { open, text, none };
    static constexpr unsigned gapsOfSentence = 3;
    static constexpr unsigned longestLine = 200;    // in sextets

    std::uint64_t begin_;
    std::uint64_t end_;
    State state_ = State::open;
    unsigned gaps_ = 0;    // that have text
    bool sentence_ = false;
    bool onlyLetters_ = true;
};

}    // namespace framing
