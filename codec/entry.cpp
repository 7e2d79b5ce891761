// Contexts, the choice of the kind that a message is of, and names of numbers.
#include "entry.h"
#include "table.h"

using namespace rtcm2;

void RTCM2_init_context(RTCM2_context_s* context)
{
    *context = {};
    for (const RTCM2_kind_s& kind : kindRows) {
        if (kind.type >= 0) {
            RTCM2_enable_kind(context, static_cast<int32_t>(kind.kind), 1);
        }
    }
}

int32_t RTCM2_decode(RTCM2_context_s* context, const uint8_t* data, uint16_t data_size,
                     RTCM2_message_s* message)
{
    if (data_size < 2) {
        return RTCM2_ERR_INVALID_MESSAGE;
    }
    const std::uint8_t type = typeOf(data);
    if (const Decoder decode = decoders[type]; decode != nullptr) [[likely]] {
        return decode(context, data, data_size, message);
    }
    message->header.Message_Type = type;
    if (context != nullptr) {
        context->unknown_type = type;
    }
    return RTCM2_ERR_INVALID_MESSAGE;
}

const char* RTCM2_error_to_string(int32_t code)
{
    const auto number = static_cast<std::size_t>(-std::int64_t{code});
    if (code >= 0) {
        return "RTCM2_ERR_NONE";
    }
    return number <= errorNames.size() ? errorNames[number - 1] : "???";
}

const char* RTCM2_message_enum_to_string(int32_t kind)
{
    if (kind == RTCM2_MESSAGE_NULL) {
        return "RTCM2_MESSAGE_NULL";
    }
    const RTCM2_kind_s* const row = rowOf(kind);
    return row != nullptr ? row->constant : "???";
}
