// The options that say which part of its inputs a command reads.
#pragma once

#include "forms/RangeReader.h"

#include <CLI/CLI.hpp>

#include <optional>
#include <string>
#include <vector>

struct PartOptions {
    std::string range;    // empty for all bytes

    void declare(CLI::App& command);

    // Throws UsageError for an input that has to be read from its beginning.
    std::optional<ByteRange> bytesOf(const std::vector<std::string>& inputs) const;
};
