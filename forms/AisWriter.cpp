#include "forms/AisWriter.h"

#include "forms/AisBroadcast.h"
#include "forms/AisSentence.h"
#include "forms/TimeStamp.h"

#include <algorithm>

namespace {

constexpr std::size_t longestPayload = 60;    // of a sentence
constexpr unsigned sequences = 10;

// Of what stands between the mark and the checksum.
std::string sentenceOf(const std::string& content)
{
    return "!" + content + "*" + checksumText(checksumOf(content)) + "\r\n";
}

}    // namespace

bool AisWriter::append(std::span<const std::uint8_t> packed, std::vector<std::uint8_t>& out)
{
    if (!framing::isWholeMessage(packed) || !envelope.sender ||
        envelope.sender->mmsi >= aisBroadcast::mostSenders) {
        return false;
    }
    const std::size_t heard =
        std::max(envelope.bitsHeard.value_or(packed.size() * 8), framing::headerBytes * 8);
    const AisBits bits = aisBroadcast::bitsOf(packed, heard, *envelope.sender);
    const std::string payload = bits.payload();
    const std::size_t count = (payload.size() + longestPayload - 1) / longestPayload;
    std::string text;
    appendTagBlock(text);
    for (std::size_t number = 1; number <= count; ++number) {
        const bool isLast = number == count;
        text += sentenceOf("AIVDM," + std::to_string(count) + "," + std::to_string(number) + "," +
                           (count > 1 ? std::to_string(sequence) : "") + ",A," +
                           payload.substr((number - 1) * longestPayload, longestPayload) + "," +
                           std::to_string(isLast ? bits.fillBits() : 0));
    }
    sequence = count > 1 ? (sequence + 1) % sequences : sequence;
    out.insert(out.end(), text.begin(), text.end());
    return true;
}

void AisWriter::appendTagBlock(std::string& text) const
{
    constexpr std::int64_t second = 1'000'000;
    constexpr std::int64_t fewestMilliseconds = 100'000'000'000;    // smaller numbers are seconds
    const std::int64_t time = envelope.received.value_or(-1);
    if (!isTimeOfText(time)) {
        return;
    }
    const bool isWhole = time % second < 1000 && time / second < fewestMilliseconds;
    const std::string content = "c:" + std::to_string(isWhole ? time / second : time / 1000);
    text += "\\" + content + "*" + checksumText(checksumOf(content)) + "\\";
}
