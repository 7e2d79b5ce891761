// Options that several commands have, alike wherever they occur.
#pragma once

#include "forms/InputForm.h"
#include "session/Session.h"

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

// Under which titles --help lists options, beside those of the command alone.
namespace optionGroup {
constexpr const char* input = "Input";
constexpr const char* choice = "Choosing messages";
constexpr const char* output = "Output";
constexpr const char* trouble = "Errors";
}    // namespace optionGroup

// Files to read. What `inputs` holds before is read when none is named.
void declareInputs(CLI::App& command, std::vector<std::string>& inputs);

// -o
void declareOutput(CLI::App& command, std::string& name);

// -n, from 1
void declareMax(CLI::App& command, std::uint64_t& max);

// --times
void declareTimes(CLI::App& command, bool& withTimes);

// --on-error, -q
void declareTrouble(CLI::App& command, SessionOptions& options, const std::string& about);

// "stream (...), packed (...), ...": the forms that are read, or those that are written.
std::string aboutForms(bool forReading);
// Their names.
std::vector<std::string> namesOfForms(bool forReading);
