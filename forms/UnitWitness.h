// Packed or recorded messages that follow each other.
#pragma once

#include "forms/UnitForm.h"
#include "forms/Witness.h"
#include "framing/Header.h"

#include <array>

// Looks for messages at every byte. One whose end meets the preamble of the next, and so on, is a
// row of messages. Where the form has parity, the words in a row decide; otherwise several messages
// in a row do. Those that do not begin with the input's first byte also have to be of one station,
// with sequence numbers that count up and times that follow each other. A message that consists of
// printable characters alone counts for nothing without parity: in a text, and in a byte stream,
// which looks like one, preambles and lengths fit together too easily.
class UnitWitness : public Witness {
public:
    explicit UnitWitness(const UnitForm& unitForm) : form(unitForm) {}

    void look(std::span<const std::uint8_t> seen) override;
    void finish() override;
    bool isCertain() const override { return certain; }
    bool fits() const override { return fitting; }
    bool vouches() const override { return form.goodWords != nullptr; }
    unsigned messages() const override { return longestRow; }
    std::uint64_t bytesBefore() const override { return before; }
    std::unique_ptr<PacketReader> makeReader(std::uint64_t firstByte) const override;

private:
    // Messages in a row, by the place where the last of them ends.
    struct Row {
        std::uint64_t end = 0;       // one past the last byte
        std::uint64_t begin = 0;     // of the last message
        unsigned messages = 0;       // 0: there is none
        std::size_t words = 0;       // in all of them, as far as they tell anything
        std::uint64_t first = 0;     // where the first of them begins
        framing::Header header{};    // of the last message
        unsigned lineEnds = 0;       // characters of a line end taken in behind the last message
    };

    void lookAt(std::uint64_t place);
    void takeLineEnd(std::uint64_t place);
    void begin(std::uint64_t place);
    void close(std::uint64_t place);
    void keep(const Row& row);
    static bool continues(const Row& row, const Row& next);
    void judge(const Row& row);
    bool isGood(const Row& row) const;
    bool endsCutOff() const;
    std::size_t headerBytes() const { return 2 * form.size; }

    // More than a message with a header and line ends around it can have.
    static constexpr std::size_t rowCount = 256;

    const UnitForm& form;
    std::span<const std::uint8_t> bytes;    // all of them
    std::uint64_t lookedAt = 0;
    std::array<Row, rowCount> rows{};    // that end a little before here or further on
    std::uint64_t lastEnd = 0;           // of any row
    Row startRow;                        // the longest from the input's first byte on
    std::uint64_t before = 0;            // bytes before the first message, once that is certain
    unsigned longestRow = 0;
    bool certain = false;
    bool fitting = false;
};
