// The one place of the program that knows which plug-in stands under it.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <vector>

class AbstractDecoder;
class FormatInfo;
class MessageSource;
class QObject;

// The fields that play a part of their own in views, by display name.
struct FieldParts {
    std::string station;
    std::string time;
    std::string satellite;
    std::string text;

    // How the time field counts: it starts again from 0 at `timeWrap`, and larger values are no
    // times.
    double secondsPerTimeUnit = 1;
    std::uint64_t timeWrap = 0;

    // What tells the system that a satellite belongs to: a field next to the satellite's whose
    // coded values name it, or else the kind of the message, by display name.
    std::vector<std::string> system{};
    std::map<std::string, std::string> systemOfKind{};
};

namespace plugin {

const FormatInfo* format();
FieldParts fieldParts();

std::unique_ptr<AbstractDecoder> makeDecoder();

// Turns the recorded blocks that `source` emits into messages for `decoder`. `mode` is the mode
// byte of blocks that carry none.
std::unique_ptr<QObject> makeExtractor(MessageSource* source, AbstractDecoder* decoder,
                                       unsigned char mode);

// The type number of a packed message, whether or not the decoder knows it; -1 when the message is
// too short to have one.
int typeNumberOf(std::span<const std::uint8_t> packed);

// Whether a decoder's negative result says that the message's kind is switched off.
bool isSwitchedOff(int result);

}    // namespace plugin
