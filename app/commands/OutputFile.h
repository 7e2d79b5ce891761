// What the commands that write to standard output or to a file have in common.
#pragma once

#include "base/ExitStatus.h"
#include "base/Output.h"

#include <functional>
#include <string>
#include <vector>

// Throws UsageError when the output is one of the inputs: opening it would empty that.
void requireOtherOutput(const std::vector<std::string>& inputs, const std::string& outputName);

// Whether output of this name, empty for standard output, is read on a terminal.
bool goesToTerminal(const std::string& outputName);

// Throws UsageError when messages would be written to a terminal in a form that is not text.
void requireNoBinaryOnTerminal(const std::string& form, const std::string& outputName);

// The program was asked to end before the work began.
struct Interrupted {};

// Directs the output to the file of this name, if there is a name. False, and told on standard
// error, when it cannot be written. Throws Interrupted.
bool openOutput(Output& output, const std::string& name);

// Whether what was written is of use: not when an input could not be read or the program was asked
// to end before it was through, so that it would end differently the next time. What came from a
// live input is always of use, as it does not come again.
bool isWorthKeeping(ExitStatus status, const std::vector<std::string>& inputs);

// Does the work, closes the output, or gives it up if it is not worth keeping, and tells on
// standard error what ended the command. The result is that of the work, unless the output could
// not be written.
ExitStatus workInto(Output& output, const std::vector<std::string>& inputs,
                    const std::function<ExitStatus()>& work);

// Writes a text to the file of this name, or to standard output if there is no name.
ExitStatus print(const std::string& text, const std::string& outputName = {});
