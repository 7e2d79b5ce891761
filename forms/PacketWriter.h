// Packed messages written in one of the forms that inputs have.
#pragma once

#include "forms/InputForm.h"

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

class PacketWriter {
public:
    virtual ~PacketWriter() = default;

    // Appends a packed message to `out`, every data bit as it is. Returns false, and appends
    // nothing, when `packed` does not begin with the preamble or has not the words that its header
    // declares: no reader would find it again.
    [[nodiscard]] virtual bool append(std::span<const std::uint8_t> packed,
                                      std::vector<std::uint8_t>& out) = 0;
};

// A writer for one output from its first byte on: words of a stream and of a recording continue the
// parity of those before. InputForm::automatic is written as a stream.
std::unique_ptr<PacketWriter> makeWriter(InputForm form);

// Whether the form is text that a terminal can show.
bool isText(InputForm form);
