// What the descriptions of a format in text, Markdown and JSON have in common.
#pragma once

#include "format/FormatModel.h"

#include <span>
#include <string>
#include <vector>

namespace describe {

using Kinds = std::vector<const KindModel*>;

Kinds allKinds(const FormatModel& format);

// A field that holds elements of some kind, with the kind that has the field.
struct Carrier {
    const KindModel* kind;
    const FieldModel* field;
};
// Where elements of the kind occur; empty for main kinds.
std::vector<Carrier> carriersOf(const FormatModel& format, const KindModel& kind);

// The field and its value by which messages of the kind are told; none for parts of messages.
struct Discriminant {
    std::string field;
    std::uint64_t value;
};
std::vector<Discriminant> discriminantsOf(const KindModel& kind);

// The name of a member of the kind or of its elements.
std::string displayName(const KindModel& kind, const RTCM2_member_s* row);

// "byte", "character", "unsigned", "signed", "float" or "messages".
const char* typeName(const FieldModel& field);

// For people: the type and its width in bits where it varies, or the kind of the elements.
std::string typeText(const FieldModel& field);

// Whether the value is computed and has no bits of its own in the message.
bool isVirtual(const FieldModel& field);

// For people: "optional", "repeated", "virtual", those that apply.
std::string flagsText(const FieldModel& field);

// Coded values of the field and what they mean.
std::span<const RTCM2_text_s> codedValues(const FieldModel& field);

// What the field is to programs: "correction"; empty where they ask for nothing of it.
std::string meaningName(const FieldModel& field);

// A factor as an exact decimal number.
std::string factorText(const RTCM2_factor_s& factor);

// For people: what the number means as a quantity, where it means none, and with which system.
std::vector<std::string> quantityTexts(const KindModel& kind, const FieldModel& field);

// A value as views show it raw; bytes in hexadecimal after 0x.
std::string valueText(const FieldModel& field, std::int64_t value);

// The names of fields that show parts of the field's value.
std::vector<std::string> partNames(const KindModel& kind, const FieldModel& field);

// "A, B, C"
std::string joined(const std::vector<std::string>& texts, const char* separator = ", ");

// "Message Type 1 (Corrections), ..."; empty for main kinds.
std::string carriersText(const FormatModel& format, const KindModel& kind);

// What tells messages of the kind, where it is a part, which system it belongs to and which points
// it tells: "Identified by Message Type = 1".
std::vector<std::string> statements(const FormatModel& format, const KindModel& kind);

}    // namespace describe
