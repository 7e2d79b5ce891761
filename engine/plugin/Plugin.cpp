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
