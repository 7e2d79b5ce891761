// Decoding and encoding through the C interface of the shared library, against straight-line
// decoders and against one bit after the other.
#include "Measured.h"

#include <cstdlib>
#include <cstring>

namespace bench {

namespace {

// The kinds that are measured. `sum` touches every part of a record that a decoder allocates or
// fills; `free` is the codec's function for whoever decoded.

struct Type1 {
    using Record = RTCM2_Message_Type_1_s;
    static constexpr unsigned type = 1;
    static constexpr unsigned dataWords = 30;    // 18 corrections
    static constexpr auto encode = RTCM2_encode_Message_Type_1;
    static constexpr auto free = RTCM2_free_Message_Type_1_children;
    static Record& of(RTCM2_message_s& message) { return message.Message_Type_1; }
    static std::uint64_t sum(const Record& record)
    {
        std::uint64_t sum = record.bit_count + record.Modified_Z_Count;
        for (unsigned i = 0; i < record.Ns; ++i) {
            sum += static_cast<std::uint64_t>(record.Corrections[i].PRC);
        }
        return sum;
    }
};

struct Type18 {
    using Record = RTCM2_Message_Type_18_s;
    static constexpr unsigned type = 18;
    static constexpr unsigned dataWords = 31;    // 15 satellites
    static constexpr auto encode = RTCM2_encode_Message_Type_18;
    static constexpr auto free = RTCM2_free_Message_Type_18_children;
    static Record& of(RTCM2_message_s& message) { return message.Message_Type_18; }
    static std::uint64_t sum(const Record& record)
    {
        std::uint64_t sum = record.bit_count + record.GNSS_Time_Of_Measurement;
        for (unsigned i = 0; i < record.Ns; ++i) {
            sum += static_cast<std::uint64_t>(record.Data[i].Carrier_Phase);
        }
        return sum;
    }
};

struct Type24 {
    using Record = RTCM2_Message_Type_24_s;
    static constexpr unsigned type = 24;
    static constexpr unsigned dataWords = 6;
    static constexpr auto encode = RTCM2_encode_Message_Type_24;
    static constexpr auto free = RTCM2_free_Message_Type_24_children;
    static Record& of(RTCM2_message_s& message) { return message.Message_Type_24; }
    static std::uint64_t sum(const Record& record)
    {
        return record.bit_count + static_cast<std::uint64_t>(record.ECEF_X + record.ECEF_Y) +
               static_cast<std::uint64_t>(record.ECEF_Z) + record.Reserved3;
    }
};

struct Type16 {
    using Record = RTCM2_Message_Type_16_s;
    static constexpr unsigned type = 16;
    static constexpr unsigned dataWords = 30;    // 90 characters
    static constexpr auto encode = RTCM2_encode_Message_Type_16;
    static constexpr auto free = RTCM2_free_Message_Type_16_children;
    static Record& of(RTCM2_message_s& message) { return message.Message_Type_16; }
    static std::uint64_t sum(const Record& record)
    {
        std::uint64_t last = 0;
        std::memcpy(&last, record.Message + record.Message_Length - sizeof last, sizeof last);
        return record.bit_count + last;
    }
};

template <class Kind>
const std::vector<Message>& messages()
{
    static const auto made = messagesOfType(Kind::type, Kind::dataWords);
    return made;
}

using Decode = std::int32_t (*)(Bytes, RTCM2_message_s&);

std::int32_t decodeWithCodec(Bytes packed, RTCM2_message_s& message)
{
    return RTCM2_decode(nullptr, packed.data(), static_cast<std::uint16_t>(packed.size()),
                        &message);
}

template <class Kind>
std::int32_t decodeStraightLine(Bytes packed, RTCM2_message_s& message)
{
    return straight_line::decode(packed, Kind::of(message));
}

template <class Kind>
std::int32_t decodeBitByBit(Bytes packed, RTCM2_message_s& message)
{
    return bit_by_bit::decode(packed, Kind::of(message));
}

// A reference that decodes anything else than the codec is none: the codec encodes what the
// reference decoded, and the bits must be the same.
template <class Kind, Decode decode>
bool decodesAll()
{
    for (const Message& packed : messages<Kind>()) {
        RTCM2_message_s message;
        const std::int32_t bits = decode(packed, message);
        Message again = packed;
        std::memset(again.data(), 0, static_cast<std::size_t>(bits > 0 ? bits : 0) / 8);
        const std::uint32_t counted = Kind::of(message).bit_count;
        const bool same = bits > 0 && counted == static_cast<std::uint32_t>(bits) &&
                          Kind::encode(again.data(), static_cast<std::uint16_t>(again.size()),
                                       &Kind::of(message)) == bits &&
                          again == packed;
        Kind::free(&Kind::of(message));
        if (!same) {
            return false;
        }
    }
    return true;
}

template <class Kind, Decode decode>
void decodeAndFree(benchmark::State& state)
{
    if (!decodesAll<Kind, decode>()) {
        state.SkipWithError("decodes something else than the codec");
        return;
    }
    RTCM2_message_s message;
    measure(state, messages<Kind>(), [&message](const Message& packed) {
        const std::int32_t bits = decode(packed, message);
        const std::uint64_t sum = Kind::sum(Kind::of(message)) + static_cast<std::uint64_t>(bits);
        Kind::free(&Kind::of(message));
        return sum;
    });
}

template <class Kind>
std::int32_t encodeWithCodec(std::span<std::uint8_t> packed, typename Kind::Record& record)
{
    return Kind::encode(packed.data(), static_cast<std::uint16_t>(packed.size()), &record);
}

template <class Kind>
std::int32_t encodeBitByBit(std::span<std::uint8_t> packed, typename Kind::Record& record)
{
    return bit_by_bit::encode(packed, record);
}

template <class Kind, auto encode>
void encodeAll(benchmark::State& state)
{
    std::vector<RTCM2_message_s> records;
    for (const Message& packed : messages<Kind>()) {
        decodeWithCodec(packed, records.emplace_back());
    }
    // Encoded over the first message: what differs from it was written.
    Message buffer = messages<Kind>().front();
    std::size_t next = 0;
    std::size_t wrong = 0;
    for (const Message& packed : messages<Kind>()) {
        const std::int32_t bits = encode(buffer, Kind::of(records[next++]));
        wrong += bits <= 0 || std::memcmp(buffer.data(), packed.data(), bits / 8) != 0 ? 1 : 0;
    }
    if (wrong != 0) {
        state.SkipWithError("encodes something else than was decoded");
    }
    next = 0;
    measure(state, messages<Kind>(), [&](const Message&) {
        const std::int32_t bits = encode(buffer, Kind::of(records[next]));
        next = (next + 1) % records.size();
        return buffer[static_cast<std::size_t>(bits) / 8 - 1];
    });
    for (RTCM2_message_s& message : records) {
        Kind::free(&Kind::of(message));
    }
}

template <class Kind>
void registerKind(const std::string& name)
{
    const auto add = [&name](const char* what, const char* how, void (*run)(benchmark::State&)) {
        benchmark::RegisterBenchmark((what + name + how).c_str(), run);
    };
    add("decode/", "/rtcm2", decodeAndFree<Kind, decodeWithCodec>);
    add("decode/", "/straight_line", decodeAndFree<Kind, decodeStraightLine<Kind>>);
    add("decode/", "/bit_by_bit", decodeAndFree<Kind, decodeBitByBit<Kind>>);
    add("encode/", "/rtcm2", encodeAll<Kind, encodeWithCodec<Kind>>);
    add("encode/", "/bit_by_bit", encodeAll<Kind, encodeBitByBit<Kind>>);
}

const bool registered = [] {
    registerKind<Type1>("type 1, 18 corrections");
    registerKind<Type18>("type 18, 15 satellites");
    registerKind<Type24>("type 24");
    registerKind<Type16>("type 16, 30 words");
    return true;
}();

}    // namespace

}    // namespace bench
