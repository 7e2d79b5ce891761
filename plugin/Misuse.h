// What a misused accessor of a message or a field throws.
#pragma once

#include "PluginExport.h"

#include <QString>

class FormatInfo;

// The format that events and errors of the plug-in carry.
const FormatInfo* formatDescriptor();

// Throws the VorloEvent for a misused accessor.
[[noreturn]] void throwMisuse(const QString& text);
[[noreturn]] void throwMisuse(const char* text);
