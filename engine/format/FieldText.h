// Values of fields as texts for people and for columns.
#pragma once

#include "base/Text.h"
#include "format/FieldPath.h"

// One value as a plain number: integers in decimal, bytes as two hexadecimal digits.
void appendPlain(Text& text, const FieldModel& field, std::int64_t value);

// Likewise for people, who are told by 0x that digits are hexadecimal.
void appendNumber(Text& text, const FieldModel& field, std::int64_t value);

// Writes the value of a quantity, "-4.34" or "G05", of a record that has the field, and gives the
// place behind it; writes nothing where the record has none. Up to RTCM2_QUANTITY_ROOM bytes there
// may be overwritten.
char* putQuantity(char* out, const FieldModel& quantity, const void* record);

// Likewise; false, and nothing, also where the field is absent.
bool appendQuantity(Text& text, const FieldModel& quantity, const void* record);

// What a coded value means, UTF-8; "DoNotUse" for the value that says so; null for a plain number.
const char* meaningOf(const FieldModel& field, std::int64_t value);

// All texts of the field's values; "DoNotUse" first, whose value may have another text, too.
std::vector<RTCM2_text_s> codedTexts(const RTCM2_member_s& row);
inline std::vector<RTCM2_text_s> codedTexts(const FieldModel& field)
{
    return codedTexts(*field.row);
}

// All values as they are: numbers separated by blanks, bytes in groups of four, a text up to its
// first NUL and as printable() gives it, "submsg" for each element; "DoNotUse" for the value that
// says so. Nothing for an absent field or quantity.
void appendRaw(Text& text, const FieldModel& field, const void* record);

// As appendRaw, but with the meaning of coded values, and units if asked for; elements are counted.
void appendInterpreted(Text& text, const FieldModel& field, const void* record, bool withUnit);

// As one of the two, for columns that people choose: hexadecimal digits have 0x before them, and a
// part of the elements has the values of all elements, separated by blanks.
void appendColumn(Text& text, const FieldPath& path, const void* record, bool isInterpreted);

// A real number with six decimals.
void appendReal(Text& text, double value);
