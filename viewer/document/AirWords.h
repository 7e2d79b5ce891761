// The words in which a message is sent.
#pragma once

#include "viewer/document/MessageDetail.h"

#include <cstdint>
#include <span>
#include <vector>

// The words of the frame that begins at byte `begin` of an input. `bytes` are a part of the input
// from byte `first` on, which begins early enough that the frame is found as in the whole. Empty
// where no frame begins there.
std::vector<AirWord> airWordsAt(std::uint64_t begin, std::span<const std::uint8_t> bytes,
                                std::uint64_t first);

// The words in which a packed message would be sent as the first one of a stream, whose bytes count
// from 0. Empty for what is no whole message.
std::vector<AirWord> wordsToSend(std::span<const std::uint8_t> packed);
