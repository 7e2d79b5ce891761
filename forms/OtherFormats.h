// Counts messages of formats that are not read, to say what an input is instead.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>

// Each of them has a checksum, and only what has it right counts.
class OtherFormats {
public:
    OtherFormats();

    // Looks at all bytes from the input's first one on. Each time there are some more.
    void look(std::span<const std::uint8_t> seen);

    bool any() const;

    // What the input looks like, for people: "RTCM 3 (2 messages) and u-blox (1 message)".
    std::string description() const;

private:
    struct Count {
        const char* name;
        std::uint64_t messages = 0;
        // The size of the message that begins with the bytes, 0 if there is none; more than the
        // bytes have if that is not certain yet.
        std::size_t (*measure)(std::span<const std::uint8_t> bytes);
    };

    std::array<Count, 2> counts;
    std::uint64_t place = 0;    // of the next byte at which a message may begin
};
