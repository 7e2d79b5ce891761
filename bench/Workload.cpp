#include "Workload.h"

#include "framing/Framer.h"
#include "framing/StreamWriter.h"

#include <fstream>
#include <iterator>
#include <random>

namespace bench {

namespace {

std::vector<std::uint8_t> contentsOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// Moves all six-bit groups of a stream up by some bits.
void shiftSextets(std::vector<std::uint8_t>& stream, unsigned bits)
{
    unsigned carried = 0;
    for (std::uint8_t& byte : stream) {
        const unsigned group = (byte & 0x3FU) << bits | carried;
        carried = group >> 6;
        byte = static_cast<std::uint8_t>(0x40U | (group & 0x3FU));
    }
    stream.push_back(static_cast<std::uint8_t>(0x40U | carried));
}

}    // namespace

std::vector<Message> messagesOfType(unsigned type, unsigned dataWords)
{
    constexpr unsigned count = 64;
    std::mt19937 random(type);
    std::vector<Message> messages(count);
    for (Message& message : messages) {
        message.resize(std::size_t{3} * (2 + dataWords));
        for (std::uint8_t& byte : message) {
            byte = static_cast<std::uint8_t>(random());
        }
        message[0] = 0x66;
        message[1] = static_cast<std::uint8_t>(type << 2 | stationOfWorkload >> 8);
        message[2] = static_cast<std::uint8_t>(stationOfWorkload);
        message[5] = static_cast<std::uint8_t>(dataWords << 3 | (message[5] & 7U));
    }
    return messages;
}

std::vector<Message> messagesOfFile(const std::string& path)
{
    const std::vector<std::uint8_t> stream = contentsOf(path);
    framing::Framer framer;
    framer.push(stream);
    framer.finish();
    std::vector<Message> messages;
    while (const framing::Frame* frame = framer.next()) {
        const auto bytes = frame->bytes();
        messages.emplace_back(bytes.begin(), bytes.end());
    }
    return messages;
}

std::vector<std::uint8_t> streamOf(const std::vector<Message>& messages, std::size_t size,
                                   unsigned bitPhase)
{
    framing::StreamWriter writer;
    std::vector<std::uint8_t> stream;
    stream.reserve(size + 1024);
    while (stream.size() < size && !messages.empty()) {
        for (const Message& message : messages) {
            writer.append(message, stream);
        }
    }
    if (bitPhase != 0) {
        shiftSextets(stream, bitPhase);
    }
    return stream;
}

}    // namespace bench
