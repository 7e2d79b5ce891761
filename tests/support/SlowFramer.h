// A framer that has the whole input at once and looks at every bit: slow, obvious, and independent
// of the library.
#pragma once

#include "support/StreamBuilder.h"

#include <string>

namespace slow {

struct Frame {
    std::string verdict;
    std::size_t begin;    // bytes of the input
    std::size_t end;
    Bytes packed;
    bool operator==(const Frame&) const = default;
};

struct Framed {
    std::vector<Frame> frames;
    std::size_t bytesSkipped;    // no sextets, or text
    std::size_t bitsOutside;     // other bits that belong to no message
};

Framed frame(const Bytes& input);

}    // namespace slow
