// The forms of input and the readers for them.
#pragma once

#include "forms/PacketReader.h"

#include <memory>
#include <optional>
#include <string_view>

enum class InputForm {
    automatic,    // found out from the first bytes
    stream,       // six bits a byte, 30-bit words with parity
    packed,       // packed messages one after another
    hex,          // a packed message a line, in hexadecimal
    words,        // words as a receiver records them, four bytes each
};

// The form of this name, or nothing.
std::optional<InputForm> inputFormOf(std::string_view name);

// A reader for one input from its first byte on.
std::unique_ptr<PacketReader> makeReader(InputForm form);
