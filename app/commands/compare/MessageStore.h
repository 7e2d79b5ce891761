// The messages of an input, kept to be compared: their bytes and what they are known by.
#pragma once

#include "format/MessageTime.h"
#include "session/Found.h"

#include <array>
#include <compare>
#include <deque>
#include <memory>
#include <string>
#include <vector>

// Messages that can be told from each other by time and sequence alone.
struct MessageGroup {
    std::uint16_t station = 0;
    std::uint8_t system = 0;    // as an index of MessageSystem
    std::uint8_t type = 0;

    auto operator<=>(const MessageGroup&) const = default;
    const RTCM2_system_s* systemRow() const { return systemAt(system); }
};

struct StoredMessage {
    std::uint64_t number;    // in its input, and its byte
    std::uint64_t byte;
    std::uint32_t block;
    std::uint16_t place;    // in the block
    std::uint8_t size;
    std::uint8_t sequence;
    MessageGroup group;
    std::uint16_t time;    // of the hour, as in the message
};

class MessageStore {
public:
    std::string input;

    // Of a message that was decoded, or whose bytes are good.
    void add(const Found& found);

    std::size_t size() const { return messages.size(); }
    const StoredMessage& operator[](std::size_t index) const { return messages[index]; }
    std::span<const std::uint8_t> bytesOf(const StoredMessage& message) const
    {
        return std::span(*blocks[message.block]).subspan(message.place, message.size);
    }
    std::string_view textOf(std::size_t index) const;

private:
    using Block = std::array<std::uint8_t, std::size_t{1} << 16>;

    std::deque<StoredMessage> messages;    // grows without being copied
    std::vector<std::unique_ptr<Block>> blocks;
    std::size_t used = sizeof(Block);    // of the last block
};
