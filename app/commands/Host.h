// What all commands work with: the format and a decoder for it.
#pragma once

#include "AbstractDecoder.h"
#include "format/FormatModel.h"
#include "plugin/DecoderDriver.h"
#include "plugin/Plugin.h"

#include <memory>

struct Host {
    FormatModel model{plugin::format()};
    std::unique_ptr<AbstractDecoder> decoder = plugin::makeDecoder();
    DecoderDriver driver{*decoder, plugin::isSwitchedOff, plugin::makeExtractor};
};
