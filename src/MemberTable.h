// The codec's kinds and their members as data, for code that fills records by the members' names.
// The rows are rendered from the schema (RTCM2_members.h).
#pragma once

#include "RTCM2.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace rtcm2 {

// How a member's value comes about.
enum class MemberRole : std::uint8_t {
    wire,        // stands in the message
    slice,       // some bits of another member
    count,       // computed from another member
    lookup,      // chosen by another member
    constant,    // never in the message, holds its initial value
    run,         // characters or bytes held in the record
    records,     // an array of sub-records
};

enum class MemberType : std::uint8_t { unsignedInteger, signedInteger, real, character, record };

// One member of a record. Other members of the same record are named by their index.
struct MemberRow {
    static constexpr int none = -1;

    const char* name;    // for people; the name in code where a kind is not described
    MemberRole role;
    MemberType type;
    std::uint8_t bits = 0;       // of the value; of one character or byte of a run
    std::uint8_t size = 0;       // bytes in the record, likewise; unused for arrays of records
    std::uint16_t offset = 0;    // in the record, in bytes
    int of = none;               // slice, count, lookup: the member that it follows from
    std::uint8_t low = 0;        // slice: its lowest bit in that member
    int length = none;           // run, records: the member with the number of elements
    unsigned limit = 0;          // run: most elements
    RTCM2_message_enum element = RTCM2_MESSAGE_NULL;    // records: kind of the elements
    int when = none;    // the member that decides whether this one is present
    // Whether the member is present in the record; null for those that always are.
    bool (*isPresent)(const void* record) = nullptr;
    // Writes a slice, count or lookup into the record from the member that it follows from.
    void (*derive)(void* record) = nullptr;
};

// One record kind. The functions take the kind's own record.
struct KindRow {
    const char* name = "";    // for people, or the name in code
    RTCM2_message_enum kind = RTCM2_MESSAGE_NULL;
    bool isMain = false;
    std::size_t size = 0;    // of the record, in bytes
    std::span<const MemberRow> members;
    void (*init)(void* record) = nullptr;
    void (*release)(void* record) = nullptr;
    // Main kinds only.
    std::int32_t (*encode)(std::uint8_t* data, std::uint16_t size, void* record) = nullptr;
    // Adds an element to the kind's array of sub-records; null for kinds without one.
    void* (*append)(void* record) = nullptr;
};

}    // namespace rtcm2
