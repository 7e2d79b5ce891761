#include "TroubleReport.h"

#include <cinttypes>
#include <cstdio>

const char* nameOf(Trouble trouble)
{
    switch (trouble) {
    case Trouble::damaged:
        return "damaged message";
    case Trouble::truncated:
        return "truncated message";
    case Trouble::unknownType:
        return "unknown type";
    case Trouble::switchedOff:
        return "kind switched off";
    case Trouble::misfit:
        return "content does not fit";
    }
    return "trouble";
}

void TroubleReport::tell(const Place& place, Trouble trouble, const std::string& text) const
{
    if (!silent) {
        std::fprintf(stderr, "rtcm2: %s: message %" PRIu64 " at byte %" PRIu64 ": %s: %s\n",
                     place.input.c_str(), place.frame.number, place.frame.beginOffset,
                     nameOf(trouble), text.c_str());
    }
}
