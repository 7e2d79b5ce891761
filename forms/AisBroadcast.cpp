#include "forms/AisBroadcast.h"

#include <algorithm>
#include <cstdlib>

namespace aisBroadcast {
namespace {

// Where things stand, in bits, and how long they are.
struct Place {
    std::size_t begin;
    unsigned bits;
};
constexpr unsigned messageNumber = 17;
constexpr unsigned messageNumberBits = 6;
constexpr unsigned repeatBits = 2;
constexpr Place mmsi{8, 30};
constexpr unsigned spareBits = 2;
constexpr Place longitude{40, 18};
constexpr Place latitude{58, 17};
constexpr unsigned lastSpareBits = 5;
constexpr std::size_t corrections = 80;

constexpr std::size_t preambleBits = 8;
constexpr std::size_t headerBits = framing::headerBytes * 8;
// A packed message's bit stands so much further behind in the AIS message.
constexpr std::size_t shift = corrections - preambleBits;

constexpr std::int32_t mostLongitude = 180 * AisSender::unitsPerDegree;
constexpr std::int32_t mostLatitude = 90 * AisSender::unitsPerDegree;

// 1010..., with ones at even bits.
void fillFrom(std::size_t bit, std::span<std::uint8_t> packed)
{
    constexpr unsigned usual = 0xAA;
    for (std::size_t byte = bit / 8; byte < packed.size(); ++byte) {
        const unsigned filled = byte == bit / 8 ? 0xFFU >> bit % 8 : 0xFFU;
        packed[byte] = static_cast<std::uint8_t>((packed[byte] & ~filled) | (usual & filled));
    }
}

bool isPosition(std::int32_t east, std::int32_t north)
{
    return std::abs(east) <= mostLongitude && std::abs(north) <= mostLatitude;
}

}    // namespace

std::optional<AisSender> senderOf(const AisBits& bits)
{
    if (bits.size() < mmsi.begin + mmsi.bits) {
        return std::nullopt;
    }
    AisSender sender{.mmsi = bits.numberAt(mmsi.begin, mmsi.bits)};
    const std::int32_t east = bits.signedAt(longitude.begin, longitude.bits);
    const std::int32_t north = bits.signedAt(latitude.begin, latitude.bits);
    if (bits.size() >= latitude.begin + latitude.bits && isPosition(east, north)) {
        sender.longitude = east;
        sender.latitude = north;
    }
    return sender;
}

std::string ofSender(const Envelope& envelope)
{
    return envelope.sender ? " of MMSI " + std::to_string(envelope.sender->mmsi) : "";
}

std::string read(const AisBits& bits, framing::Frame& frame, Envelope& envelope)
{
    envelope.sender = senderOf(bits);
    if (bits.size() < shift + headerBits) {
        return "no correction data in the AIS message" + ofSender(envelope);
    }
    const std::size_t heard = bits.size() - shift;
    const auto content = bits.bytes().subspan(corrections / 8);
    frame.storage[0] = framing::preamble;
    std::copy_n(content.begin(), frame.storage.size() - 1, frame.storage.begin() + 1);
    frame.wordCount = framing::declaredWords(frame.storage);
    const auto packed = std::span(frame.storage).first(frame.wordCount * framing::bytesPerWord);
    if (heard < packed.size() * 8) {
        fillFrom(heard, packed);
        envelope.bitsHeard = heard;
    }
    return {};
}

AisBits bitsOf(std::span<const std::uint8_t> packed, std::size_t bitsHeard, const AisSender& sender)
{
    const bool has = sender.hasPosition() && isPosition(sender.longitude, sender.latitude);
    AisBits bits;
    bits.append(messageNumber, messageNumberBits);
    bits.append(0, repeatBits);
    bits.append(sender.mmsi, mmsi.bits);
    bits.append(0, spareBits);
    bits.append(static_cast<std::uint32_t>(has ? sender.longitude : AisSender::noLongitude),
                longitude.bits);
    bits.append(static_cast<std::uint32_t>(has ? sender.latitude : AisSender::noLatitude),
                latitude.bits);
    bits.append(0, lastSpareBits);
    for (std::size_t bit = preambleBits; bit < std::min(bitsHeard, packed.size() * 8); bit += 8) {
        const auto some = static_cast<unsigned>(std::min<std::size_t>(8, bitsHeard - bit));
        bits.append(packed[bit / 8] >> (8 - some), some);
    }
    return bits;
}

}    // namespace aisBroadcast
