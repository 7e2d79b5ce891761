// The main kinds of the codec behind one interface, for tests that treat all of them alike.
#pragma once

#include "table.h"

#include <cstdint>
#include <cstring>
#include <map>
#include <string>
#include <vector>

// The value of every member of a record by its name in code, and of what it starts with. Elements
// of arrays have names like "Corrections.0" with their members as in "Corrections.0.PRC";
// characters count as unsigned bytes.
using Fields = std::map<std::string, double>;

struct MainKind {
    explicit MainKind(const RTCM2_kind_s& kindRow)
        : row(kindRow), type(kindRow.type), kind(kindRow.kind)
    {
    }

    // The decoder and encoder that start at any bit.
    std::int32_t decode(RTCM2_message_s& message, std::uint32_t& offset, const std::uint8_t* data,
                        std::uint16_t size, std::uint32_t declaredLength,
                        void* parent = nullptr) const
    {
        return rtcm2::functionsOf(row).decode(&message, &offset, data, size, parent,
                                              declaredLength);
    }
    std::int32_t encode(RTCM2_message_s& message, std::uint8_t* data, std::uint16_t size,
                        std::uint32_t& offset) const
    {
        return RTCM2_encode_record(&message, data, size, &offset);
    }
    std::int32_t encodeMessage(RTCM2_message_s& message, std::uint8_t* data,
                               std::uint16_t size) const
    {
        std::uint32_t offset = 0;
        return rtcm2::functionsOf(row).encode(&message, data, size, &offset);
    }

    // The array of sub-records and its count; null for kinds without.
    const RTCM2_member_s* array() const { return row.array; }
    const RTCM2_member_s* count() const { return row.array ? row.array->length : nullptr; }
    // "MESSAGE_TYPE_1"
    std::string name() const;

    const RTCM2_kind_s& row;
    int type;
    RTCM2_message_enum kind;
};

// What every record, main or sub-record, starts with.
struct RecordStart {
    explicit RecordStart(const void* record) { std::memcpy(this, record, sizeof *this); }

    RTCM2_message_enum kind;
    std::uint32_t bitCount;
    void* parent;
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

// A message whose header declares so many words, of `size` bytes, those after the header being
// `fill`.
std::vector<std::uint8_t> packedMessage(int type, unsigned words, std::size_t size,
                                        std::uint8_t fill = 0xA5);

// A record in storage that holds a pattern, so that what was not written can be told, with the
// release of its array.
class TestMessage {
public:
    explicit TestMessage(const MainKind& kind) : message(), m_kind(kind) { reset(); }
    ~TestMessage() { RTCM2_free_message(&message); }
    TestMessage(const TestMessage&) = delete;
    TestMessage& operator=(const TestMessage&) = delete;

    void reset();
    // By RTCM2_decode without a context.
    std::int32_t decode(const std::vector<std::uint8_t>& bytes);
    // Lists at most `elements` elements of an array of sub-records.
    Fields fields(unsigned elements = ~0U) const;
    // The array of sub-records and its count; null and 0 for kinds without.
    const char* array() const;
    unsigned count() const;
    void setCount(unsigned count);

    RTCM2_message_s message;

private:
    const MainKind& m_kind;
};
