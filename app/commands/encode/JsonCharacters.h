// The characters of an input as RapidJSON reads them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

class InputFile;

// Remembers everything from a mark on, so that reading can go back there. Its memory is the text
// behind the mark, which cannot become longer than `longest` while a value is read, and one block.
class JsonCharacters {
public:
    using Ch = char;
    static constexpr std::size_t longest = 1 << 20;

    explicit JsonCharacters(InputFile& input) : file(input) {}

    // What RapidJSON asks for. Positions count from the mark; NUL is the end.
    char Peek() { return position < text.size() || refill() ? text[position] : '\0'; }
    char Take() { return position < text.size() || refill() ? text[position++] : '\0'; }
    std::size_t Tell() const { return position - mark; }
    // Nothing is parsed in place.
    char* PutBegin() { return nullptr; }
    void Put(char) {}
    void Flush() {}
    std::size_t PutEnd(char*) { return 0; }

    // Whether what was read from the mark on has become too long.
    bool isTooLong() const { return limited && position - mark >= longest; }
    // Bytes of the input that have been read.
    std::uint64_t bytesRead() const { return total; }
    bool isAtEnd() { return position >= text.size() && !refill(); }

    // Forgets what was read so far. `limit` holds for what follows.
    void setMark(bool limit);
    // Line and column, both from 1, of a position from the mark.
    std::uint64_t lineAt(std::size_t offset) const;
    std::uint64_t columnAt(std::size_t offset) const;

    // After a mistake at this position from the mark: goes to the first line behind the mark, but
    // not behind the mistake, that begins with a brace, unless the value begun there is among the
    // `incomplete` ones; else to the next line that can begin an object.
    void recover(std::size_t mistake, std::span<const std::size_t> incomplete);

private:
    void skipLine();
    bool refill();

    InputFile& file;
    std::string text;
    std::size_t position = 0;    // in the text
    std::size_t mark = 0;        // likewise
    bool limited = false;
    bool ended = false;
    std::uint64_t total = 0;
    std::uint64_t markLine = 1;
    std::uint64_t markColumn = 1;
};
