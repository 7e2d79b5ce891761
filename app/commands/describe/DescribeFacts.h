// What the descriptions of a format in text, Markdown and JSON have in common.
#pragma once

#include "format/FormatModel.h"

#include "FieldType.h"

#include <string>
#include <vector>

class FieldValue;

namespace describe {

using Kinds = std::vector<const KindModel*>;

// A field that holds elements of some kind, with the kind that has the field.
struct Carrier {
    const KindModel* kind;
    const FieldModel* field;
};

// Where elements of the kind occur; empty for main kinds.
std::vector<Carrier> carriersOf(const FormatModel& format, const KindModel& kind);

// "byte", "character", "unsigned", "signed", "float" or "messages".
const char* typeName(FieldType::Kind type);

// For people: the type and its width in bits where it varies, or the kind of the elements.
std::string typeText(const FieldModel& field);

// For people: "optional", "repeated", "virtual", those that apply.
std::string flagsText(const FieldModel& field);

// A value as views show it raw; bytes in hexadecimal after 0x.
std::string valueText(const FieldValue& value);

// The names of fields that show parts of the field's value.
std::vector<std::string> partNames(const FieldModel& field);

// "A, B, C"
std::string joined(const std::vector<std::string>& texts);

// How to tell messages of the kind: "Message Type = 1"; empty where nothing tells.
std::string identification(const KindModel& kind);

// "Message Type 1 (Corrections), ..."; empty for main kinds.
std::string carriersText(const FormatModel& format, const KindModel& kind);

}    // namespace describe
