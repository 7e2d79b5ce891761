// What message objects need of the descriptors, which stand one floor above them: declared here,
// defined beside the descriptors.
#pragma once

#include "PluginExport.h"

class FormatInfo;
class MessageInfo;

// The descriptor of a message class.
template <class MessageClass>
VORLO_RTCM2_INTERNAL const MessageInfo* descriptorOf();

// The format that events and errors of the plug-in carry.
const FormatInfo* formatDescriptor();

// Throws the VorloEvent for a misused accessor of a field or a message.
[[noreturn]] VORLO_RTCM2_EXPORT void throwMisuse(const char* text);
