// A message of which fewer words came than its header declares.
#pragma once

#include "framing/Frame.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>

class ShortMessage {
public:
    // The message as if it declared so many words, header included, no more than it has. Valid
    // until the next call.
    std::span<const std::uint8_t> cutTo(std::size_t words, std::span<const std::uint8_t> packed)
    {
        constexpr std::size_t lastOfHeader = framing::headerBytes - 1;    // number of words, health
        const std::span<const std::uint8_t> kept =
            packed.first(std::min(words * framing::bytesPerWord, packed.size()));
        std::copy(kept.begin(), kept.end(), bytes.begin());
        declaredWords = packed[lastOfHeader] >> 3;
        const std::size_t dataWords = kept.size() / framing::bytesPerWord - framing::headerWords;
        bytes[lastOfHeader] =
            static_cast<std::uint8_t>(dataWords << 3 | (packed[lastOfHeader] & 7U));
        return std::span(bytes).first(kept.size());
    }

    // Data words that the message itself declares.
    unsigned declared() const { return declaredWords; }

private:
    std::array<std::uint8_t, framing::maxMessageBytes> bytes{};
    unsigned declaredWords = 0;
};
