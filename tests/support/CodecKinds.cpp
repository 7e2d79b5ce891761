#include "support/CodecKinds.h"

#include "RTCM2_layouts.h"
#include "support/ExactBuffer.h"

#include <algorithm>
#include <cctype>
#include <stdexcept>

using namespace rtcm2;
using namespace rtcm2::layouts;

namespace {

template <class Record, auto decodeKind, auto encodeKind>
MainKind mainKindOf(int type, RTCM2_message_enum kind)
{
    return {type, kind,
            [](RTCM2_message_s& message, std::uint32_t& offset, const std::uint8_t* data,
               std::uint16_t size, std::uint32_t declaredLength) {
                return decodeKind(reinterpret_cast<Record*>(&message), &offset, data, size, nullptr,
                                  declaredLength);
            },
            [](RTCM2_message_s& message, std::uint8_t* data, std::uint16_t size,
               std::uint32_t& offset) {
                return encodeKind(reinterpret_cast<Record*>(&message), data, size, &offset);
            }};
}

#define MAIN_KIND(N)                                                                               \
    mainKindOf<RTCM2_Message_Type_##N##_s, decode_Message_Type_##N, encode_Message_Type_##N>(      \
        N, RTCM2_MESSAGE_TYPE_##N)

// A row's name is for people; in code, what is neither a letter nor a digit is an underscore.
std::string nameInCode(const char* name)
{
    std::string result;
    for (; *name != '\0'; ++name) {
        if (std::isalnum(static_cast<unsigned char>(*name))) {
            result += *name;
        } else if (!result.ends_with('_')) {
            result += '_';
        }
    }
    return result;
}

double numberAt(const char* place, const MemberRow& row)
{
    const auto as = [place](auto value) {
        std::memcpy(&value, place, sizeof value);
        return static_cast<double>(value);
    };
    const bool isSigned = row.type == MemberType::signedInteger;
    switch (row.size) {
    case 1:
        return isSigned ? as(std::int8_t{}) : as(std::uint8_t{});
    case 2:
        return isSigned ? as(std::int16_t{}) : as(std::uint16_t{});
    case 4:
        return isSigned ? as(std::int32_t{}) : as(std::uint32_t{});
    default:
        return row.type == MemberType::real ? as(double{}) : as(std::int64_t{});
    }
}

unsigned lengthOf(const MemberRow& row, const KindRow& kind, const void* record)
{
    const MemberRow& length = kind.members[static_cast<std::size_t>(row.length)];
    return static_cast<unsigned>(
        numberAt(static_cast<const char*>(record) + length.offset, length));
}

const char* elementsOf(const MemberRow& row, const void* record)
{
    const char* elements = nullptr;
    std::memcpy(&elements, static_cast<const char*>(record) + row.offset, sizeof elements);
    return elements;
}

void listMembers(const KindRow& kind, const void* record, const void* parent,
                 const std::string& prefix, unsigned mostElements, Fields& fields)
{
    const RecordStart start(record);
    fields[prefix + "kind"] = start.kind;
    fields[prefix + "bit_count"] = start.bitCount;
    fields[prefix + "has_parent"] = start.parent == parent;
    for (const MemberRow& row : kind.members) {
        const std::string name = prefix + nameInCode(row.name);
        const char* const place = static_cast<const char*>(record) + row.offset;
        if (row.role == MemberRole::records) {
            const KindRow& elementKind = kindRows()[row.element];
            const char* element = elementsOf(row, record);
            const unsigned count = std::min(lengthOf(row, kind, record), mostElements);
            for (unsigned i = 0; i < count; ++i, element += elementKind.size) {
                listMembers(elementKind, element, record, name + "." + std::to_string(i) + ".", 0,
                            fields);
            }
        } else if (row.role != MemberRole::run) {
            fields[name] = numberAt(place, row);
        } else if (row.isPresent == nullptr || row.isPresent(record)) {
            for (unsigned i = 0; i < std::min(lengthOf(row, kind, record), row.limit); ++i) {
                fields[name + "." + std::to_string(i)] = numberAt(place + i, row);
            }
        }
    }
}

}    // namespace

const MemberRow* MainKind::array() const
{
    const auto found =
        std::find_if(row().members.begin(), row().members.end(),
                     [](const MemberRow& member) { return member.role == MemberRole::records; });
    return found != row().members.end() ? &*found : nullptr;
}

const MemberRow* MainKind::count() const
{
    return array() ? &row().members[static_cast<std::size_t>(array()->length)] : nullptr;
}

std::string MainKind::name() const
{
    return std::string(RTCM2_message_enum_to_string(kind)).substr(std::strlen("RTCM2_"));
}

const std::vector<MainKind>& mainKinds()
{
    static const std::vector<MainKind> kinds{
        MAIN_KIND(3),  MAIN_KIND(16), MAIN_KIND(22), MAIN_KIND(23), MAIN_KIND(24), MAIN_KIND(32),
        MAIN_KIND(59), MAIN_KIND(1),  MAIN_KIND(9),  MAIN_KIND(15), MAIN_KIND(18), MAIN_KIND(19),
        MAIN_KIND(20), MAIN_KIND(21), MAIN_KIND(31), MAIN_KIND(38), MAIN_KIND(39), MAIN_KIND(40),
        MAIN_KIND(44), MAIN_KIND(46), MAIN_KIND(47), MAIN_KIND(48), MAIN_KIND(49), MAIN_KIND(50),
        MAIN_KIND(51), MAIN_KIND(52)};
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
    m_kind.release(message);
    std::memset(static_cast<void*>(&message), 0x2A, sizeof message);
    m_kind.row().init(&message);
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
    listMembers(m_kind.row(), &message, nullptr, "", elements, fields);
    return fields;
}

const char* TestMessage::array() const
{
    const MemberRow* const row = m_kind.array();
    return row ? elementsOf(*row, &message) : nullptr;
}

unsigned TestMessage::count() const
{
    return m_kind.array() ? lengthOf(*m_kind.array(), m_kind.row(), &message) : 0;
}

void TestMessage::setCount(unsigned count)
{
    char* const place = reinterpret_cast<char*>(&message) + m_kind.count()->offset;
    if (m_kind.count()->size == 1) {
        *place = static_cast<char>(count);
    } else {
        const auto value = static_cast<std::uint16_t>(count);
        std::memcpy(place, &value, sizeof value);
    }
}
