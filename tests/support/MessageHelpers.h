// Helpers of the tests of message objects, descriptors and decoder.
#pragma once

#include "MemLeakTracer.h"
#include "Message.h"
#include "RTCM2_FormatInfo.h"
#include "VorloEvent.h"
#include "support/CompletionOrder.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <ostream>
#include <vector>

// So that a failure shows texts.
inline void PrintTo(const QString& text, std::ostream* out)
{
    *out << '"' << text.toStdString() << '"';
}

// A message of station 5, Z-count 4500, sequence 3 and health 0, in a block of exactly its size.
inline std::vector<std::uint8_t> packed(unsigned type, unsigned words,
                                        const std::vector<std::uint8_t>& payload = {})
{
    const std::uint64_t header = std::uint64_t{0x66} << 40 | std::uint64_t{type} << 34 |
                                 std::uint64_t{5} << 24 | 4500U << 11 | 3U << 8 | words << 3;
    std::vector<std::uint8_t> bytes;
    bytes.reserve(6 + payload.size());
    for (int shift = 40; shift >= 0; shift -= 8) {
        bytes.push_back(static_cast<std::uint8_t>(header >> shift));
    }
    bytes.insert(bytes.end(), payload.begin(), payload.end());
    return bytes;
}

inline int liveMessages()
{
    const auto alive = MemLeakTracer::liveObjectsByClass();
    int messages = 0;
    for (auto entry = alive.cbegin(); entry != alive.cend(); ++entry) {
        messages += entry.key().endsWith(QLatin1String("_Message")) ? entry.value() : 0;
    }
    return messages;
}

// Reads what only messages may ask of each other.
class RecordPeek : public Message {
public:
    // The record behind a message.
    static const void* recordOf(const Message* message) { return getRawRepresentationOf(message); }
};

// The text of the event that a misused accessor throws.
template <class Call>
QString misuseText(Call call)
{
    try {
        call();
    } catch (const VorloEvent& event) {
        EXPECT_EQ(event.getType(), VorloEvent::AccessorMisuse);
        EXPECT_EQ(event.getFormatInfo(), RTCM2_FormatInfo::getInstance());
        return event.getText();
    }
    return QStringLiteral("nothing thrown");
}
