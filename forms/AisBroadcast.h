// AIS message 17, the broadcast of differential corrections: a packed message without its preamble
// behind the station that sends it.
#pragma once

#include "forms/AisBits.h"
#include "forms/Envelope.h"
#include "framing/Frame.h"

#include <cstdint>
#include <span>
#include <string>

namespace aisBroadcast {

// The first character of the payload: message 17.
inline constexpr char firstCharacter = 'A';

// The sender, as far as that was heard. A position out of range says nothing.
std::optional<AisSender> senderOf(const AisBits& bits);

// " of MMSI 2734450", or nothing where the sender is not known; for people.
std::string ofSender(const Envelope& envelope);

// The packed message into the frame, with as many words as it declares: what was not heard is
// filled up, and more than these words is left out. Sets the envelope's sender and bits heard.
// Returns what is wrong, for people; empty if there is a message.
std::string read(const AisBits& bits, framing::Frame& frame, Envelope& envelope);

// Of a packed message's first `bitsHeard` bits, which are its header at least. Its sender's MMSI
// has to be below mostSenders.
inline constexpr std::uint32_t mostSenders = std::uint32_t{1} << 30;
AisBits bitsOf(std::span<const std::uint8_t> packed, std::size_t bitsHeard,
               const AisSender& sender);

}    // namespace aisBroadcast
