#include "RTCM2Decoder.h"

#include "Delivery.h"
#include "MemLeakTracer.h"
#include "PluginKinds.h"
#include "RTCM2_format.h"
#include "UnitTrace.h"

#include <algorithm>
#include <limits>

namespace {

UnitTrace decoderTrace{"Vorlo_RTCM2", "RTCM2Decoder", "plugin/RTCM2Decoder.cpp"};

void switchMainKinds(RTCM2_context_s& context, bool enabled)
{
    for (int kind = 1; kind <= RTCM2_last_kind(); ++kind) {
        if (RTCM2_kind(kind)->type >= 0) {
            RTCM2_enable_kind(&context, kind, enabled ? 1 : 0);
        }
    }
}

}    // namespace

RTCM2Decoder::RTCM2Decoder(QObject* parent) : AbstractDecoder(QStringLiteral("RTCM2"), parent)
{
    decoderTrace.pass();
    MemLeakTracer::allocateObject(QStringLiteral("RTCM2Decoder"));
    RTCM2_init_context(&context);
    const auto kinds = pluginKinds;
    for (std::size_t value = 0; value < kinds.size(); ++value) {
        if (kinds[value].descriptor != nullptr) {
            setMessageEnum(kinds[value].descriptor(), static_cast<int>(value));
        }
    }
}

RTCM2Decoder::~RTCM2Decoder()
{
    decoderTrace.pass();
    MemLeakTracer::deallocateObject(QStringLiteral("RTCM2Decoder"));
}

int32_t RTCM2Decoder::decodeMessage(const uint8_t* buffer, unsigned int maxlength)
{
    constexpr unsigned int longest = std::numeric_limits<std::uint16_t>::max();
    RTCM2_message_s decoded;
    decoded.kind = RTCM2_MESSAGE_NULL;    // stays so unless the decoder of a kind runs
    const std::int32_t result = RTCM2_decode(
        &context, buffer, static_cast<std::uint16_t>(std::min(maxlength, longest)), &decoded);
    report(*this, context, result, decoded);
    return result;
}

void RTCM2Decoder::enableAllMessages()
{
    switchMainKinds(context, true);
}

void RTCM2Decoder::disableAllMessages()
{
    switchMainKinds(context, false);
}

void RTCM2Decoder::enableMessageEnum(int value)
{
    RTCM2_enable_kind(&context, value, 1);
}

void RTCM2Decoder::disableMessageEnum(int value)
{
    RTCM2_enable_kind(&context, value, 0);
}

bool RTCM2Decoder::isEnabledMessageEnum(int value) const
{
    return RTCM2_is_kind_enabled(&context, value) != 0;
}

// Compiled here instead of on its own.
#include "moc_RTCM2Decoder.cpp"
