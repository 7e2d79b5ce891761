// What the benchmarks work on: packed messages and streams, the same in every run.
#pragma once

#include "References.h"

#include <string>

namespace bench {

using Message = std::vector<std::uint8_t>;

inline constexpr unsigned stationOfWorkload = 417;

// Packed messages of one type that differ in everything but type, station and length.
std::vector<Message> messagesOfType(unsigned type, unsigned dataWords);

// The messages of a sample capture.
std::vector<Message> messagesOfFile(const std::string& path);

// The messages one after the other, and again, as a stream of about `size` bytes. The first message
// begins `bitPhase` (0 to 5) bits into a byte of the stream.
std::vector<std::uint8_t> streamOf(const std::vector<Message>& messages, std::size_t size,
                                   unsigned bitPhase = 0);

}    // namespace bench
