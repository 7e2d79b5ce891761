// The options that say which part of its inputs a command reads.
#pragma once

#include "forms/RangeReader.h"
#include "session/Window.h"

#include <CLI/CLI.hpp>

#include <optional>
#include <string>
#include <vector>

struct PartOptions {
    std::string range;    // empty for all bytes
    std::string from;     // empty for the first message
    std::string until;    // empty for the last one
    std::string date;     // when the input begins; empty where that is not told

    // Where --to is the form of the output, it is declared before.
    void declare(CLI::App& command);

    // Throws UsageError for an input that has to be read from its beginning.
    std::optional<ByteRange> bytesOf(const std::vector<std::string>& inputs) const;

    WindowOptions window() const;
    // Throws UsageError where a date would be that of several inputs.
    void requireOneBeginning(const std::vector<std::string>& inputs) const;
};
