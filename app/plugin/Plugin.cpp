#include "Plugin.h"

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
            .text = "Message"};
}

std::unique_ptr<AbstractDecoder> makeDecoder()
{
    return std::make_unique<RTCM2Decoder>(nullptr);
}

bool isSwitchedOff(int result)
{
    return std::string_view(RTCM2_error_to_string(result)).ends_with("_DISABLED");
}

}    // namespace plugin
