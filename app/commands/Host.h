// What all commands work with: the format and a decoder for it.
#pragma once

#include "format/FormatModel.h"
#include "plugin/Decoding.h"

struct Host : Decoding {
    FormatModel model{plugin::format()};
};
