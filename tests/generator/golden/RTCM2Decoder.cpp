// Rendered by generator/render.py from schema through RTCM2Decoder.cpp.j2. Do not edit.
#include "RTCM2Decoder.h"

#include "DecoderSupport.h"
#include "MemLeakTracer.h"
#include "RTCM2_Buoy_MessageInfo.h"
#include "RTCM2_Harbour_MessageInfo.h"
#include "UnitTrace.h"

static UnitTrace traceOf_RTCM2Decoder{"Vorlo_RTCM2", "RTCM2Decoder", "src/generated/RTCM2Decoder.cpp"};

// The codec's kinds by value.
static const DecoderKind decoderKinds[] = {
    {},
    // RTCM2_BUOY
    {.descriptor = descriptorOf<RTCM2_Buoy_Message>},
    // RTCM2_HARBOUR
    {.descriptor = descriptorOf<RTCM2_Harbour_Message>,
     .deliver = [](MessageSource& source, RTCM2_message_s& decoded) { deliverRecord<RTCM2_Harbour_Message, RTCM2_Harbour_Traits>(source, decoded.Harbour); },
.release = [](RTCM2_message_s& decoded) { RTCM2_free_Harbour_children(&decoded.Harbour); }},
    // RTCM2_TIDE
    {.release = [](RTCM2_message_s& decoded) { RTCM2_free_Tide_children(&decoded.Tide); }},
};

RTCM2Decoder::RTCM2Decoder(QObject* parent)
    : AbstractDecoder(QStringLiteral("RTCM2"), parent)
{
    traceOf_RTCM2Decoder.pass();
    MemLeakTracer::allocateObject(QStringLiteral("RTCM2Decoder"));
    RTCM2_init_context(&context);
    for (int value = 0; value < static_cast<int>(std::size(decoderKinds)); ++value) {
        if (decoderKinds[value].descriptor != nullptr) {
            setMessageEnum(decoderKinds[value].descriptor(), value);
        }
    }
}

RTCM2Decoder::~RTCM2Decoder()
{
    traceOf_RTCM2Decoder.pass();
    MemLeakTracer::deallocateObject(QStringLiteral("RTCM2Decoder"));
}

int32_t RTCM2Decoder::decodeMessage(const uint8_t* buffer, unsigned int maxlength)
{
    return decodeAndReport(*this, context, decoderKinds, buffer, maxlength);
}

void RTCM2Decoder::enableAllMessages()
{
    switchAllKinds(context, true);
}

void RTCM2Decoder::disableAllMessages()
{
    switchAllKinds(context, false);
}

void RTCM2Decoder::enableMessageEnum(int value)
{
    switchKind(context, value, true);
}

void RTCM2Decoder::disableMessageEnum(int value)
{
    switchKind(context, value, false);
}

bool RTCM2Decoder::isEnabledMessageEnum(int value) const
{
    return isKindEnabled(context, value);
}
