// The words in which a message is sent.
#pragma once

#include "viewer/document/MessageDetail.h"

#include "framing/Framer.h"

#include <cstdint>
#include <span>
#include <vector>

AirWord airWordOf(const framing::WordFacts& word);

// The words in which a packed message would be sent as the first one of a stream, whose bytes count
// from 0. None for what is no whole message.
std::vector<AirWord> wordsToSend(std::span<const std::uint8_t> packed);
