#include "sources/UrlSchemes.h"

#include <algorithm>

namespace {

const UrlParameter timeoutParameter{"timeout", "seconds of silence, 0 for any", 0, 1e6};
const UrlParameter pauseParameter{"pause", "seconds, from 0.01 to 60", 0.01, 60};
const UrlParameter retriesParameter{"retries", "a number, 0 or more", 0, 1e9};

}    // namespace

const std::vector<UrlScheme>& urlSchemes()
{
    static const std::vector<UrlScheme> all = {
        {"tcp",
         "tcp://HOST:PORT",
         true,
         true,
         0,
         false,
         {timeoutParameter, pauseParameter, retriesParameter}},
        {"ntrip",
         "ntrip://[USER@]HOST[:PORT]/MOUNTPOINT",
         true,
         false,
         2101,
         true,
         {timeoutParameter, pauseParameter, retriesParameter}},
        {"udp",
         "udp://:PORT or udp://GROUP:PORT",
         false,
         true,
         0,
         false,
         {{"from", "the address of the sender"}, {"interface", "the name of an interface"}}},
        {"serial",
         "serial:/dev/ttyUSB0?baud=38400",
         false,
         false,
         0,
         true,
         {{"baud", "bits a second", 1, 1e8},
          {"bits", "5 to 8", 5, 8},
          {"parity", "none, even or odd"},
          {"stop", "1 or 2", 1, 2},
          pauseParameter,
          retriesParameter}}};
    return all;
}

const UrlScheme* urlScheme(std::string_view name)
{
    const std::vector<UrlScheme>& all = urlSchemes();
    const auto found = std::find_if(all.begin(), all.end(),
                                    [&](const UrlScheme& scheme) { return scheme.name == name; });
    return found == all.end() ? nullptr : &*found;
}
