// Rendered by generator/render.py from schema through RTCM2.cpp.j2. Do not edit.
#include "RTCM2.h"

#include "RTCM2_layouts.h"
#include "codec_support.h"

#include <array>
#include <cstdint>

using namespace rtcm2;
using namespace rtcm2::layouts;

static_assert(sizeof(RTCM2_message_enum) == 4 && sizeof(RTCM2_context_s) == 7);

void RTCM2_init_context(RTCM2_context_s* context)
{
    *context = { {0x30, 0x00, 0x00, 0x00, 0x00, 0x00}, 0x00 };
}

const char* RTCM2_error_to_string(int32_t code)
{
    static const char* const names[] = {
        "RTCM2_ERR_NONE",
        "RTCM2_ERR_INVALID_CRC",
        "RTCM2_ERR_BUOY_LOOK_EXT_BUFFER_OVERFLOW",
        "RTCM2_ERR_BUOY_HEIGHT_EXT_BUFFER_OVERFLOW",
        "RTCM2_ERR_BUOY_HEIGHT_SIZE_UNDERFLOW",
        "RTCM2_ERR_BUOY_INTERNAL",
        "RTCM2_ERR_HARBOUR_PREAMBLE_EXT_BUFFER_OVERFLOW",
        "RTCM2_ERR_HARBOUR_MESSAGE_TYPE_EXT_BUFFER_OVERFLOW",
        "RTCM2_ERR_HARBOUR_STATION_EXT_BUFFER_OVERFLOW",
        "RTCM2_ERR_HARBOUR_PILOT_EXT_BUFFER_OVERFLOW",
        "RTCM2_ERR_HARBOUR_CHANNEL_EXT_BUFFER_OVERFLOW",
        "RTCM2_ERR_HARBOUR_LENGTH_EXT_BUFFER_OVERFLOW",
        "RTCM2_ERR_HARBOUR_TITLE_EXT_BUFFER_OVERFLOW",
        "RTCM2_ERR_HARBOUR_TITLE_INT_BUFFER_OVERFLOW",
        "RTCM2_ERR_HARBOUR_NOTE_EXT_BUFFER_OVERFLOW",
        "RTCM2_ERR_HARBOUR_NOTE_INT_BUFFER_OVERFLOW",
        "RTCM2_ERR_HARBOUR_BUOYS_SIZE_UNDERFLOW",
        "RTCM2_ERR_HARBOUR_INTERNAL",
        "RTCM2_ERR_TIDE_PREAMBLE_EXT_BUFFER_OVERFLOW",
        "RTCM2_ERR_TIDE_MESSAGE_TYPE_EXT_BUFFER_OVERFLOW",
        "RTCM2_ERR_TIDE_STATION_EXT_BUFFER_OVERFLOW",
        "RTCM2_ERR_TIDE_LEVEL_EXT_BUFFER_OVERFLOW",
        "RTCM2_ERR_TIDE_LEVEL_SIZE_UNDERFLOW",
        "RTCM2_ERR_TIDE_INTERNAL",
        "RTCM2_ERR_HARBOUR_DISABLED",
        "RTCM2_ERR_TIDE_DISABLED",
        "RTCM2_ERR_INVALID_MESSAGE",
        "RTCM2_ERR_EOF",
    };
    if (code >= 0) {
        return names[0];
    }
    return code >= RTCM2_ERR_EOF ? names[-code] : "???";
}

const char* RTCM2_message_enum_to_string(int32_t kind)
{
    static const char* const names[] = {
        "RTCM2_MESSAGE_NULL",
        "RTCM2_BUOY",
        "RTCM2_HARBOUR",
        "RTCM2_TIDE",
    };
    return kind >= 0 && kind < RTCM2_MESSAGE_COUNT ? names[kind] : "???";
}

// Sub-record Buoy.

int32_t RTCM2_init_Buoy(RTCM2_Buoy_s* record)
{
    record->kind = RTCM2_BUOY;
    record->bit_count = 0;
    record->parent = nullptr;
    record->Colour = 0;
    record->Chart = 0;
    return 0;
}

int32_t RTCM2_validate_Buoy(const RTCM2_Buoy_s*)
{
    return 0;
}

void RTCM2_free_Buoy_children(RTCM2_Buoy_s*)
{
}

struct Buoy_Element {
    static constexpr auto init = RTCM2_init_Buoy;
    static constexpr auto decode = decode_Buoy;
    static constexpr unsigned bits = 16;

    template <class Run>
    [[gnu::always_inline]] static void get(Run& run, RTCM2_Buoy_s& r)
    {
        if (!run.template get<0, 7>(r.Look, RTCM2_ERR_BUOY_LOOK_EXT_BUFFER_OVERFLOW)) return;
        r.Colour = sliceOf<2, 4>(r.Look);
        if (!run.template get<7, 9>(r.Height, RTCM2_ERR_BUOY_HEIGHT_EXT_BUFFER_OVERFLOW)) return;
    }
};

std::int32_t layouts::decode_Buoy(RTCM2_Buoy_s* record, std::uint32_t* offset, const std::uint8_t* data,
    std::uint16_t data_size, void* parent, std::uint32_t declared_length)
{
    Decoding in(data, data_size, *offset);
    in.run<16>(*record, [](auto& run, auto& r) {
        RTCM2_init_Buoy(&r);
        Buoy_Element::get(run, r);
    });
    record->parent = parent;
    return in.finish(record->bit_count, offset, declared_length, RTCM2_ERR_BUOY_HEIGHT_SIZE_UNDERFLOW, RTCM2_ERR_BUOY_INTERNAL);
}

std::int32_t layouts::encode_Buoy(RTCM2_Buoy_s* record, std::uint8_t* data, std::uint16_t data_size,
    std::uint32_t* offset)
{
    Encoding out(data, data_size, *offset);
    out.run<16>(*record, [](auto& run, auto& r) {
        foldSlice<2, 4>(r.Look, r.Colour);
        if (!run.template put<0, 7>(r.Look, RTCM2_ERR_BUOY_LOOK_EXT_BUFFER_OVERFLOW)) return;
        if (!run.template put<7, 9>(r.Height, RTCM2_ERR_BUOY_HEIGHT_EXT_BUFFER_OVERFLOW)) return;
    });
    return out.finish(record->bit_count, offset);
}

// Type 5: Harbour and its buoys.

int32_t RTCM2_init_Harbour(RTCM2_Harbour_s* record)
{
    record->kind = RTCM2_HARBOUR;
    record->bit_count = 0;
    record->parent = nullptr;
    record->Preamble = 0x66;
    record->Message_Type = 5;
    record->Reach = 0;
    record->Length = 0;
    record->Title[0] = record->Title[31] = '\0';
    record->Nb = 0;
    record->Buoys = nullptr;
    return 0;
}

int32_t RTCM2_validate_Harbour(const RTCM2_Harbour_s*)
{
    return 0;
}

void RTCM2_free_Harbour_children(RTCM2_Harbour_s* record)
{
    std::free(record->Buoys);
}

std::int32_t layouts::decode_Harbour(RTCM2_Harbour_s* record, std::uint32_t* offset, const std::uint8_t* data,
    std::uint16_t data_size, void* parent, std::uint32_t declared_length)
{
    Decoding in(data, data_size, *offset);
    in.run<51>(*record, [](auto& run, auto& r) {
        RTCM2_init_Harbour(&r);
        if (!run.template get<0, 8>(r.Preamble, RTCM2_ERR_HARBOUR_PREAMBLE_EXT_BUFFER_OVERFLOW)) return;
        if (!run.template get<8, 6>(r.Message_Type, RTCM2_ERR_HARBOUR_MESSAGE_TYPE_EXT_BUFFER_OVERFLOW)) return;
        if (!run.template get<14, 34>(r.Station_, RTCM2_ERR_HARBOUR_STATION_EXT_BUFFER_OVERFLOW)) return;
        if (!run.template get<48, 3>(r.Pilot, RTCM2_ERR_HARBOUR_PILOT_EXT_BUFFER_OVERFLOW)) return;
        r.Reach = r.Pilot == 0 ? 0.5 : r.Pilot == 1 ? 2 : r.Reach;
    });
    record->parent = parent;
    if (!in.failed() && (record->Pilot == 1 || record->Pilot == 2)) {
        in.run<8>(*record, [](auto& run, auto& r) {
            if (!run.template get<0, 8>(r.Channel, RTCM2_ERR_HARBOUR_CHANNEL_EXT_BUFFER_OVERFLOW)) return;
        });
    }
    in.run<5>(*record, [](auto& run, auto& r) {
        if (!run.template get<0, 5>(r.Length, RTCM2_ERR_HARBOUR_LENGTH_EXT_BUFFER_OVERFLOW)) return;
        r.Nb = countOf<uint16_t, 24, 3, 16>(r.Length);
    });
    if (!in.failed() && (record->Pilot == 1 || record->Pilot == 2)) {
        in.elements(record->Title, record->Length, 31, RTCM2_ERR_HARBOUR_TITLE_EXT_BUFFER_OVERFLOW, RTCM2_ERR_HARBOUR_TITLE_INT_BUFFER_OVERFLOW);
        if (!in.failed()) record->Title[record->Length] = '\0';
    }
    in.elements(record->Note, record->Length, 9, RTCM2_ERR_HARBOUR_NOTE_EXT_BUFFER_OVERFLOW, RTCM2_ERR_HARBOUR_NOTE_INT_BUFFER_OVERFLOW);
    in.records<Buoy_Element>(record->Buoys, record->Nb, record, RTCM2_ERR_HARBOUR_INTERNAL);
    return in.finish(record->bit_count, offset, declared_length, RTCM2_ERR_HARBOUR_BUOYS_SIZE_UNDERFLOW, RTCM2_ERR_HARBOUR_INTERNAL);
}

std::int32_t layouts::encode_Harbour(RTCM2_Harbour_s* record, std::uint8_t* data, std::uint16_t data_size,
    std::uint32_t* offset)
{
    Encoding out(data, data_size, *offset);
    out.run<51>(*record, [](auto& run, auto& r) {
        if (!run.template put<0, 8>(r.Preamble, RTCM2_ERR_HARBOUR_PREAMBLE_EXT_BUFFER_OVERFLOW)) return;
        if (!run.template put<8, 6>(r.Message_Type, RTCM2_ERR_HARBOUR_MESSAGE_TYPE_EXT_BUFFER_OVERFLOW)) return;
        if (!run.template put<14, 34>(r.Station_, RTCM2_ERR_HARBOUR_STATION_EXT_BUFFER_OVERFLOW)) return;
        if (!run.template put<48, 3>(r.Pilot, RTCM2_ERR_HARBOUR_PILOT_EXT_BUFFER_OVERFLOW)) return;
    });
    if (record->Pilot == 1 || record->Pilot == 2) {
        out.run<8>(*record, [](auto& run, auto& r) {
            if (!run.template put<0, 8>(r.Channel, RTCM2_ERR_HARBOUR_CHANNEL_EXT_BUFFER_OVERFLOW)) return;
        });
    }
    out.run<5>(*record, [](auto& run, auto& r) {
        if (!run.template put<0, 5>(r.Length, RTCM2_ERR_HARBOUR_LENGTH_EXT_BUFFER_OVERFLOW)) return;
    });
    if (record->Pilot == 1 || record->Pilot == 2) out.elements(record->Title, record->Length, 31, RTCM2_ERR_HARBOUR_TITLE_EXT_BUFFER_OVERFLOW, RTCM2_ERR_HARBOUR_TITLE_INT_BUFFER_OVERFLOW);
    out.elements(record->Note, record->Length, 9, RTCM2_ERR_HARBOUR_NOTE_EXT_BUFFER_OVERFLOW, RTCM2_ERR_HARBOUR_NOTE_INT_BUFFER_OVERFLOW);
    out.records<encode_Buoy>(record->Buoys, record->Nb, RTCM2_ERR_HARBOUR_INTERNAL);
    return out.finish(record->bit_count, offset);
}

int32_t RTCM2_encode_Harbour(uint8_t* data, uint16_t data_size, RTCM2_Harbour_s* record)
{
    std::uint32_t offset = 0;
    return encode_Harbour(record, data, data_size, &offset);
}

RTCM2_Buoy_s* RTCM2_append_Harbour_Buoys(RTCM2_Harbour_s* record)
{
    return appendRecord(record->Buoys, record->Nb, RTCM2_init_Buoy, record);
}

int32_t RTCM2_strcpy_Harbour_Title(RTCM2_Harbour_s* record, const char* text)
{
    record->Length = copyText(record->Title, text, 31);
    return 0;
}

int32_t RTCM2_memcpy_Harbour_Note(RTCM2_Harbour_s* record, const void* bytes, uint32_t count)
{
    std::memcpy(record->Note, bytes, std::min<std::size_t>(count, sizeof record->Note));
    return 0;
}

// Type 6.

int32_t RTCM2_init_Tide(RTCM2_Tide_s* record)
{
    record->kind = RTCM2_TIDE;
    record->bit_count = 0;
    record->parent = nullptr;
    record->Preamble = 0x66;
    record->Message_Type = 6;
    return 0;
}

int32_t RTCM2_validate_Tide(const RTCM2_Tide_s*)
{
    return 0;
}

void RTCM2_free_Tide_children(RTCM2_Tide_s*)
{
}

std::int32_t layouts::decode_Tide(RTCM2_Tide_s* record, std::uint32_t* offset, const std::uint8_t* data,
    std::uint16_t data_size, void* parent, std::uint32_t declared_length)
{
    Decoding in(data, data_size, *offset);
    in.run<88>(*record, [](auto& run, auto& r) {
        RTCM2_init_Tide(&r);
        if (!run.template get<0, 8>(r.Preamble, RTCM2_ERR_TIDE_PREAMBLE_EXT_BUFFER_OVERFLOW)) return;
        if (!run.template get<8, 6>(r.Message_Type, RTCM2_ERR_TIDE_MESSAGE_TYPE_EXT_BUFFER_OVERFLOW)) return;
        if (!run.template get<14, 34>(r.Station_, RTCM2_ERR_TIDE_STATION_EXT_BUFFER_OVERFLOW)) return;
        if (!run.template get<48, 40>(r.Level, RTCM2_ERR_TIDE_LEVEL_EXT_BUFFER_OVERFLOW)) return;
    });
    record->parent = parent;
    return in.finish(record->bit_count, offset, declared_length, RTCM2_ERR_TIDE_LEVEL_SIZE_UNDERFLOW, RTCM2_ERR_TIDE_INTERNAL);
}

std::int32_t layouts::encode_Tide(RTCM2_Tide_s* record, std::uint8_t* data, std::uint16_t data_size,
    std::uint32_t* offset)
{
    Encoding out(data, data_size, *offset);
    out.run<88>(*record, [](auto& run, auto& r) {
        if (!run.template put<0, 8>(r.Preamble, RTCM2_ERR_TIDE_PREAMBLE_EXT_BUFFER_OVERFLOW)) return;
        if (!run.template put<8, 6>(r.Message_Type, RTCM2_ERR_TIDE_MESSAGE_TYPE_EXT_BUFFER_OVERFLOW)) return;
        if (!run.template put<14, 34>(r.Station_, RTCM2_ERR_TIDE_STATION_EXT_BUFFER_OVERFLOW)) return;
        if (!run.template put<48, 40>(r.Level, RTCM2_ERR_TIDE_LEVEL_EXT_BUFFER_OVERFLOW)) return;
    });
    return out.finish(record->bit_count, offset);
}

int32_t RTCM2_encode_Tide(uint8_t* data, uint16_t data_size, RTCM2_Tide_s* record)
{
    std::uint32_t offset = 0;
    return encode_Tide(record, data, data_size, &offset);
}

// What follows takes what RTCM2_decode takes, which goes on there once it has seen the type.

static std::uint8_t typeOf(const std::uint8_t* data)
{
    return quarn::read<std::uint8_t, 8, 6>(data);
}

static std::int32_t decodeUnknown(RTCM2_context_s* context, const std::uint8_t* data, std::uint16_t,
                                  RTCM2_message_s* message)
{
    message->header.Message_Type = typeOf(data);
    if (context != nullptr) {
        context->unknown_type = typeOf(data);
    }
    return RTCM2_ERR_INVALID_MESSAGE;
}

// Decodes a message from its first bit, of no parent and no declared length; the kind's decoder is
// made anew for that.
template <auto decodeKind, auto member, RTCM2_message_enum kind, std::int32_t disabledError>
[[gnu::flatten]] static std::int32_t decodeKnown(RTCM2_context_s* context, const std::uint8_t* __restrict data,
                                                 std::uint16_t data_size, RTCM2_message_s* message)
{
    if (context != nullptr && !EnableFlag(kind).test(*context)) {
        message->header.Message_Type = typeOf(data);
        return disabledError;
    }
    std::uint32_t offset = 0;
    return decodeKind(&(message->*member), &offset, data, data_size, nullptr, 0);
}

// For all values of the field Message Type.
static constexpr auto decoders = [] {
    std::array<decltype(&RTCM2_decode), 64> byType{};
    byType.fill(decodeUnknown);
    byType[5] = decodeKnown<decode_Harbour, &RTCM2_message_s::Harbour, RTCM2_HARBOUR, RTCM2_ERR_HARBOUR_DISABLED>;
    byType[6] = decodeKnown<decode_Tide, &RTCM2_message_s::Tide, RTCM2_TIDE, RTCM2_ERR_TIDE_DISABLED>;
    return byType;
}();

int32_t RTCM2_decode(RTCM2_context_s* context, const uint8_t* data, uint16_t data_size, RTCM2_message_s* message)
{
    return data_size < 2 ? RTCM2_ERR_INVALID_MESSAGE : decoders[typeOf(data)](context, data, data_size, message);
}
