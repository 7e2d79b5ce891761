// What the commands that write to standard output or to a file have in common.
#pragma once

#include "base/ExitStatus.h"
#include "base/Output.h"

#include <functional>
#include <string>
#include <vector>

// Throws UrlError for an input whose name is wrong, and UsageError for one that has no end and is
// not the last.
void requireInputs(const std::vector<std::string>& inputs);

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

// Whether one of them is live, so that what came from there does not come again.
bool anyIsLive(const std::vector<std::string>& inputs);

// Whether the command ended so before it was through its inputs.
bool isCutShort(ExitStatus status);

// Does the work, closes the output, or gives it up, and tells on standard error what ended the
// command. The result is that of the work, unless the output could not be written.
//
// The output is given up when the work was cut short, so that it would end differently the next
// time, unless a part is of use all the same: what came from a live input does not come again.
ExitStatus workInto(Output& output, const std::function<bool()>& isPartOfUse,
                    const std::function<ExitStatus()>& work);

// Writes a text to the file of this name, or to standard output if there is no name.
ExitStatus print(const std::string& text, const std::string& outputName = {});
