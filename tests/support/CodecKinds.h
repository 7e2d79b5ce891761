// The main kinds of the codec behind one interface, for tests that treat all of them alike.
#pragma once

#include "RTCM2.h"

#include <cstdint>
#include <cstring>
#include <map>
#include <string>
#include <vector>

// The value of every member of a record by name. Elements of arrays have names like "Corrections.0"
// with their members as in "Corrections.0.PRC"; characters count as unsigned bytes.
using Fields = std::map<std::string, double>;

struct MainKind {
    int type;
    RTCM2_message_enum kind;
    std::int32_t (*init)(RTCM2_message_s&);
    // The decoder and encoder that start at any bit, and the entries that start at bit 0.
    std::int32_t (*decode)(RTCM2_message_s&, std::uint32_t& offset, const std::uint8_t* data,
                           std::uint16_t size, void* parent, std::uint32_t declaredLength);
    std::int32_t (*encode)(RTCM2_message_s&, std::uint8_t* data, std::uint16_t size,
                           std::uint32_t& offset);
    std::int32_t (*encodeMessage)(RTCM2_message_s&, std::uint8_t* data, std::uint16_t size);
    void (*release)(RTCM2_message_s&);
    // Lists at most `elements` elements of an array of sub-records.
    Fields (*fields)(const RTCM2_message_s&, unsigned elements);
    // Null and 0 for kinds without sub-records.
    const void* (*array)(const RTCM2_message_s&);
    unsigned (*count)(const RTCM2_message_s&);

    // "MESSAGE_TYPE_1"
    std::string name() const;
};

// All bytes of a record, to tell whether one has changed.
template <class Record>
std::vector<std::uint8_t> bytesOf(const Record& record)
{
    std::vector<std::uint8_t> bytes(sizeof record);
    std::memcpy(bytes.data(), &record, sizeof record);
    return bytes;
}

const std::vector<MainKind>& mainKinds();
const MainKind& mainKind(int type);

// A record in storage that holds a pattern, so that what was not written can be told, with the
// release of its array.
class TestMessage {
public:
    explicit TestMessage(const MainKind& kind);
    ~TestMessage();
    TestMessage(const TestMessage&) = delete;
    TestMessage& operator=(const TestMessage&) = delete;

    std::int32_t decode(std::uint32_t& offset, const std::uint8_t* data, std::uint16_t size,
                        std::uint32_t declaredLength = 0);
    Fields fields(unsigned elements = ~0U) const { return m_kind.fields(message, elements); }

    RTCM2_message_s message;

private:
    const MainKind& m_kind;
};
