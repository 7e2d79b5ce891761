// The forms of input and output, with the readers and writers for them.
#pragma once

#include "forms/PacketReader.h"
#include "forms/PacketWriter.h"

#include <memory>
#include <optional>
#include <string_view>

enum class InputForm {
    automatic,    // found out from the first bytes
    stream,       // six bits a byte, 30-bit words with parity
    packed,       // packed messages one after another
    hex,          // a packed message a line, in hexadecimal
    words,        // words as a receiver records them, four bytes each
    aivdm,        // sentences of AIS message 17
};
inline constexpr int inputFormCount = 6;

// The form of this name, or nothing.
std::optional<InputForm> inputFormOf(std::string_view name);

// The name of a form.
const char* nameOf(InputForm form);

// What it is, for people, in a few words.
const char* aboutForm(InputForm form);

// Whether the form is text that a terminal can show.
bool isText(InputForm form);

// A reader for one input, which gets its bytes from this one on. InputForm::automatic needs the
// input's first byte.
std::unique_ptr<PacketReader> makeReader(InputForm form, std::uint64_t firstByte = 0);

// A writer for one output from its first byte on: words of a stream and of a recording continue the
// parity of those before. InputForm::automatic is written as a stream.
std::unique_ptr<PacketWriter> makeWriter(InputForm form);
