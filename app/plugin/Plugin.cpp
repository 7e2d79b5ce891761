#include "plugin/Plugin.h"

#include "QLX_DiffCorrIn_RTCM2Extractor.h"
#include "RTCM2Decoder.h"
#include "RTCM2_FormatInfo.h"

#include <string_view>

namespace plugin {

const FormatInfo* format()
{
    return RTCM2_FormatInfo::getInstance();
}

FieldParts fieldParts()
{
    return {.station = "Reference Station Id",
            .time = "Modified Z-Count",
            .satellite = "Satellite Id",
            .text = "Message",
            .secondsPerTimeUnit = 0.6,
            .timeWrap = 6000,
            .system = {"Constellation", "G"},
            .systemOfKind = {{"Message Type 1", "GPS"},
                             {"Message Type 9", "GPS"},
                             {"Message Type 31", "GLONASS"}}};
}

std::unique_ptr<AbstractDecoder> makeDecoder()
{
    return std::make_unique<RTCM2Decoder>(nullptr);
}

std::unique_ptr<QObject> makeExtractor(MessageSource* source, AbstractDecoder* decoder,
                                       unsigned char mode)
{
    return std::make_unique<QLX_DiffCorrIn_RTCM2Extractor>(source, decoder, nullptr, mode);
}

bool isSwitchedOff(int result)
{
    return std::string_view(RTCM2_error_to_string(result)).ends_with("_DISABLED");
}

}    // namespace plugin
