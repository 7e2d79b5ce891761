// The one place of the program that knows which plug-in stands under it.
#pragma once

#include <memory>

class AbstractDecoder;
class FormatInfo;
class MessageSource;
class QObject;

namespace plugin {

const FormatInfo* format();

std::unique_ptr<AbstractDecoder> makeDecoder();

// Turns the recorded blocks that `source` emits into messages for `decoder`. `mode` is the mode
// byte of blocks that carry none.
std::unique_ptr<QObject> makeExtractor(MessageSource* source, AbstractDecoder* decoder,
                                       unsigned char mode);

// Whether a decoder's negative result says that the message's kind is switched off.
bool isSwitchedOff(int result);

}    // namespace plugin
