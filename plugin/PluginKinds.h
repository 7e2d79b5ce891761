// The codec's kinds as the plug-in treats them. The rows are rendered from the schema.
#pragma once

#include "RTCM2.h"

#include <span>
#include <typeinfo>

class Message;
class MessageInfo;

struct PluginKind {
    // The kind's descriptor and its message class; null for kinds that the host does not know.
    const MessageInfo* (*descriptor)() = nullptr;
    const std::type_info* messageClass = nullptr;
    // A message that holds a copy of a decoded record and takes over its arrays; null for
    // sub-records, and for kinds that are reported to nobody.
    const Message* (*make)(const RTCM2_message_s& decoded) = nullptr;
};

// One row for every kind value from 0, the null kind, on.
extern const std::span<const PluginKind> pluginKinds;

// The kinds that the host knows in the order in which they are registered.
std::span<const RTCM2_message_enum> registeredKinds();
