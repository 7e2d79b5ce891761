// Texts of a field's values for people and for columns.
#pragma once

#include "format/FormatModel.h"

#include <string>

class Message;

// The raw value or values as one text; empty for an absent field.
std::string rawText(const FieldModel& field, const Message& message);

// As rawText, but with the meaning of coded values, and units if asked for. Texts and numbers of
// repeated fields are joined; the elements of a sub-message field are counted.
std::string interpretedText(const FieldModel& field, const Message& message, bool withUnit);

// The text of one value of a field.
std::string interpretedText(const FieldModel& field, const Message& message, unsigned index,
                            bool withUnit);
