// Records of every kind through the rows of the table, for tests that treat all kinds alike.
#pragma once

#include "record_values.h"
#include "support/ExactBuffer.h"
#include "table.h"

#include <gtest/gtest.h>

#include <cstring>
#include <map>
#include <string>
#include <vector>

using Bytes = std::vector<std::uint8_t>;

// What a record holds, by name: every member as it is stored, whether or not the message has it,
// and its kind, bit_count and whether its parent is the right one. Elements of arrays have names
// like "Corrections.0.PRC", characters and bytes like "Message.0".
using Fields = std::map<std::string, double>;

inline const RTCM2_kind_s& mainKind(int type)
{
    return *RTCM2_kind_of_type(type);
}

template <class Test>
void forEachMainKind(Test test)
{
    for (const RTCM2_kind_s& kind : rtcm2::kindRows) {
        if (kind.type >= 0) {
            SCOPED_TRACE(kind.name);
            test(kind);
        }
    }
}

// The name of a kind's error code.
inline std::string errorOf(const RTCM2_kind_s& kind, const std::string& rest)
{
    return "RTCM2_ERR_" + std::string(kind.constant + std::strlen("RTCM2_")) + "_" + rest;
}

// All bytes of a record, to tell whether one has changed.
template <class Record>
Bytes bytesOf(const Record& record)
{
    Bytes bytes(sizeof record);
    std::memcpy(bytes.data(), &record, sizeof record);
    return bytes;
}

// A message whose header declares so many words, of `size` bytes, those after the header `fill`.
inline Bytes packedMessage(int type, unsigned words, std::size_t size, std::uint8_t fill = 0xA5)
{
    Bytes bytes{0x66, static_cast<std::uint8_t>(type << 2), 0x05, 0x8C,
                0xA3, static_cast<std::uint8_t>(words << 3)};
    bytes.resize(size, fill);
    return bytes;
}

// Where a value is.
struct Spot {
    // As in Fields.
    std::string path(const RTCM2_member_s& of) const
    {
        return prefix + of.name + (of.role == RTCM2_ROLE_RUN ? "." + std::to_string(index) : "");
    }

    void* record;
    const RTCM2_kind_s& kind;
    const RTCM2_member_s& member;
    std::uint32_t index;
    std::uint32_t element;    // of which this is a member
    std::string prefix;
};

// Visits the values of a record one by one, and those of its elements.
template <class Visit>
void forEachValue(void* record, const RTCM2_kind_s& kind, Visit visit, std::uint32_t element = 0,
                  const std::string& prefix = "")
{
    for (const RTCM2_member_s& member : rtcm2::membersOf(kind)) {
        for (std::uint32_t i = 0; i < RTCM2_count(record, &member); ++i) {
            if (member.role == RTCM2_ROLE_ARRAY) {
                forEachValue(RTCM2_element(record, &member, i), *member.elements, visit, i,
                             prefix + member.name + "." + std::to_string(i) + ".");
            } else {
                visit(Spot{record, kind, member, i, element, prefix});
            }
        }
    }
}

// A record in storage that holds a pattern, so that what was not written can be told, with the
// release of its array.
class TestMessage {
public:
    explicit TestMessage(const RTCM2_kind_s& of) : message(), kind(of) { reset(); }
    explicit TestMessage(int type) : TestMessage(mainKind(type)) {}
    ~TestMessage() { RTCM2_free_message(&message); }
    TestMessage(const TestMessage&) = delete;
    TestMessage& operator=(const TestMessage&) = delete;

    void reset()
    {
        RTCM2_free_message(&message);
        std::memset(static_cast<void*>(&message), 0x2A, sizeof message);
        RTCM2_init_record(kind.kind, &message);
    }

    std::int32_t decode(const Bytes& bytes)
    {
        reset();
        ExactBuffer buffer(bytes);
        return RTCM2_decode(nullptr, buffer.data(), buffer.size(), &message);
    }
    // At any bit.
    std::int32_t decodeAt(std::uint32_t& offset, const Bytes& bytes, std::uint32_t declared = 0,
                          void* parent = nullptr)
    {
        reset();
        ExactBuffer buffer(bytes);
        return rtcm2::functionsOf(kind).decode(&message, &offset, buffer.data(), buffer.size(),
                                               parent, declared);
    }
    std::int32_t encodeInto(ExactBuffer& target, std::uint32_t& offset)
    {
        return RTCM2_encode_record(&message, target.data(), target.size(), &offset);
    }

    const RTCM2_member_s& row(const char* name) const { return *RTCM2_find_member(&kind, name); }
    // Stores a value that the functions of the table may refuse.
    void put(const char* name, std::int64_t value)
    {
        rtcm2::putInteger(rtcm2::placeOf(&message, row(name)), row(name).size, value);
    }
    std::int64_t get(const char* name) const { return rtcm2::integerOf(&message, row(name)); }
    const char* array() const { return rtcm2::elementsOf(&message, *kind.array); }

    // Lists at most `elements` elements of an array.
    Fields fields(unsigned elements = ~0U) const
    {
        Fields fields;
        list(kind, &message, nullptr, "", elements, fields);
        return fields;
    }

    RTCM2_message_s message;
    const RTCM2_kind_s& kind;

private:
    static void list(const RTCM2_kind_s& kind, const void* record, const void* parent,
                     const std::string& prefix, unsigned most, Fields& fields)
    {
        const rtcm2::RecordHead head = rtcm2::headOf(record);
        fields[prefix + "kind"] = head.kind;
        fields[prefix + "bit_count"] = head.bit_count;
        fields[prefix + "has_parent"] = head.parent == parent;
        for (const RTCM2_member_s& member : rtcm2::membersOf(kind)) {
            const std::string name = prefix + member.name;
            const char* const place = rtcm2::placeOf(record, member);
            const bool isOne = member.length == nullptr;
            const unsigned count = isOne ? 1 : rtcm2::elementCount(record, member);
            for (unsigned i = 0; i < count && (member.elements == nullptr || i < most); ++i) {
                const std::string path = isOne ? name : name + "." + std::to_string(i);
                if (member.elements != nullptr) {
                    list(*member.elements, RTCM2_element(record, &member, i), record, path + ".", 0,
                         fields);
                } else if (member.type == RTCM2_TYPE_REAL) {
                    fields[path] = rtcm2::valueAt<double>(place);
                } else {
                    fields[path] = static_cast<double>(rtcm2::integerAt(place + i, member));
                }
            }
        }
    }
};
