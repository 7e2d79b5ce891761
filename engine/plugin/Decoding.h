// A decoder of the plug-in's with what drives it: for one thread at a time, and for one reading
// after another, each of which may switch kinds off for good.
#pragma once

#include "AbstractDecoder.h"
#include "plugin/DecoderDriver.h"
#include "plugin/Plugin.h"

#include <memory>

struct Decoding {
    std::unique_ptr<AbstractDecoder> decoder = plugin::makeDecoder();
    DecoderDriver driver{*decoder, plugin::isSwitchedOff, plugin::makeExtractor};
};
