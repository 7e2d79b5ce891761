// What the commands that write to standard output or to a file have in common.
#pragma once

#include "base/ExitStatus.h"
#include "base/Output.h"

#include <string>
#include <vector>

// Throws UsageError when the output is one of the inputs: opening it would empty that.
void requireOtherOutput(const std::vector<std::string>& inputs, const std::string& outputName);

// Whether output of this name, empty for standard output, is read on a terminal.
bool goesToTerminal(const std::string& outputName);

// Throws UsageError when messages would be written to a terminal in a form that is not text.
void requireNoBinaryOnTerminal(const std::string& form, const std::string& outputName);

// Directs the output to the file of this name, if there is a name. False, and told on standard
// error, when it cannot be written.
bool openOutput(Output& output, const std::string& name);

// Closes the output and tells on standard error what ended the command. The result is `status`,
// unless the output could not be written.
ExitStatus tellEnd(Output& output, ExitStatus status);
