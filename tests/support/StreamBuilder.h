// Makes streams bit by bit, with a parity of its own that shares nothing with the framing library.
#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <span>
#include <vector>

using Bytes = std::vector<std::uint8_t>;

// D25..D30 of the data bits d1 (highest) to d24, one bit at a time from the equations.
std::uint32_t referenceParity(std::uint32_t data, bool d29, bool d30);

// A packed message of one station, else with random contents.
Bytes makeMessage(std::size_t dataWords, std::mt19937& random, unsigned station = 268);

class StreamBuilder {
public:
    void addBits(std::uint32_t bits, unsigned count);
    void addNoise(std::size_t count, std::mt19937& random);

    // Continues the parity from the two bits that now end the stream (zeros at its start).
    void addMessage(std::span<const std::uint8_t> packed);
    // Makes a message, adds and returns it.
    Bytes addRandom(std::size_t dataWords, std::mt19937& random, unsigned station = 268);

    std::size_t bitCount() const { return bits_.size(); }
    void flip(std::size_t bit) { bits_[bit] = !bits_[bit]; }
    void erase(std::size_t bit, std::size_t count);

    // The last byte is filled up with zeros.
    Bytes bytes() const;

private:
    void addWord(std::uint32_t data);

    std::vector<bool> bits_;
};
