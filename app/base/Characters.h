// The characters of text fields. A character of a message is one byte and means the code point of
// the same number.
#pragma once

#include <string>
#include <string_view>

class FieldInfo;
class Message;

// Replaces `characters` by all characters of a text field, NULs included.
void readCharacters(const FieldInfo& field, const Message& message, std::string& characters);

// One terminating NUL says no more than the length of the text does.
std::string_view withoutTerminator(std::string_view characters);

std::string_view upToFirstNul(std::string_view characters);

// Appends the characters in UTF-8.
void appendUtf8(std::string& text, std::string_view characters);
