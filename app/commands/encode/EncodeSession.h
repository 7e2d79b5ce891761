// Reads messages in JSON and hands them on as packed messages.
#pragma once

#include "base/ExitStatus.h"
#include "session/Session.h"

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

class Output;

// Writes a packed message. False when the form cannot hold it.
using WriteMessage = std::function<bool(std::span<const std::uint8_t> packed)>;

// Reads the inputs one after another, "-" being standard input. What cannot be read or encoded is
// told on standard error, and the rest is encoded all the same. What `write` is given goes to
// `output`.
ExitStatus encodeInputs(const std::vector<std::string>& inputs, Output& output,
                        const WriteMessage& write, const SessionOptions& options);
