#include "support/CodecKinds.h"

#include "record_values.h"
#include "support/ExactBuffer.h"

#include <algorithm>
#include <stdexcept>

namespace {

double numberAt(const char* place, const RTCM2_member_s& member)
{
    if (member.type == RTCM2_TYPE_REAL) {
        return rtcm2::valueAt<double>(place);
    }
    const std::int64_t value = rtcm2::integerAt(place, member);
    return static_cast<double>(member.type == RTCM2_TYPE_CHARACTER ? value & 0xFF : value);
}

void listMembers(const RTCM2_kind_s& kind, const void* record, const void* parent,
                 const std::string& prefix, unsigned mostElements, Fields& fields)
{
    const RecordStart start(record);
    fields[prefix + "kind"] = start.kind;
    fields[prefix + "bit_count"] = start.bitCount;
    fields[prefix + "has_parent"] = start.parent == parent;
    for (const RTCM2_member_s& member : rtcm2::membersOf(kind)) {
        const std::string name = prefix + member.name;
        const char* const place = rtcm2::placeOf(record, member);
        if (member.role == RTCM2_ROLE_ARRAY) {
            const unsigned count = std::min(RTCM2_count(record, &member), mostElements);
            for (unsigned i = 0; i < count; ++i) {
                listMembers(*member.elements, RTCM2_element(record, &member, i), record,
                            name + "." + std::to_string(i) + ".", 0, fields);
            }
        } else if (member.role != RTCM2_ROLE_RUN) {
            fields[name] = numberAt(place, member);
        } else {
            for (unsigned i = 0; i < RTCM2_count(record, &member); ++i) {
                fields[name + "." + std::to_string(i)] = numberAt(place + i, member);
            }
        }
    }
}

}    // namespace

std::string MainKind::name() const
{
    return std::string(RTCM2_message_enum_to_string(kind)).substr(std::strlen("RTCM2_"));
}

const std::vector<MainKind>& mainKinds()
{
    static const std::vector<MainKind> kinds = [] {
        std::vector<MainKind> mains;
        for (const RTCM2_kind_s& row : rtcm2::kindRows) {
            if (row.type >= 0) {
                mains.emplace_back(row);
            }
        }
        return mains;
    }();
    return kinds;
}

const MainKind& mainKind(int type)
{
    for (const MainKind& kind : mainKinds()) {
        if (kind.type == type) {
            return kind;
        }
    }
    throw std::out_of_range("no main kind of type " + std::to_string(type));
}

std::vector<std::uint8_t> packedMessage(int type, unsigned words, std::size_t size,
                                        std::uint8_t fill)
{
    std::vector<std::uint8_t> bytes{0x66, static_cast<std::uint8_t>(type << 2), 0x05, 0x8C,
                                    0xA3, static_cast<std::uint8_t>(words << 3)};
    bytes.resize(size, fill);
    return bytes;
}

void TestMessage::reset()
{
    RTCM2_free_message(&message);
    std::memset(static_cast<void*>(&message), 0x2A, sizeof message);
    RTCM2_init_record(m_kind.kind, &message);
}

std::int32_t TestMessage::decode(const std::vector<std::uint8_t>& bytes)
{
    reset();
    ExactBuffer buffer(bytes);
    return RTCM2_decode(nullptr, buffer.data(), buffer.size(), &message);
}

Fields TestMessage::fields(unsigned elements) const
{
    Fields fields;
    listMembers(m_kind.row, &message, nullptr, "", elements, fields);
    return fields;
}

const char* TestMessage::array() const
{
    return m_kind.array() ? rtcm2::elementsOf(&message, *m_kind.array()) : nullptr;
}

unsigned TestMessage::count() const
{
    return m_kind.array() ? rtcm2::lengthOf(&message, *m_kind.array()) : 0;
}

void TestMessage::setCount(unsigned count)
{
    const RTCM2_member_s& member = *m_kind.count();
    rtcm2::putInteger(rtcm2::placeOf(&message, member), member.size, count);
}
