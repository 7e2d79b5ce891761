// convert --split: a file for each station, type, hour or sender.
#pragma once

#include "commands/ReadingOptions.h"
#include "export/CopySink.h"

// Empty: everything goes to one output.
void declareSplit(CLI::App& command, std::string& by);

// What the options name is read, and goes into files in the directory that is named as the output.
ExitStatus runSplit(Host& host, const ReadingOptions& reading, const CopyOptions& copy,
                    const std::string& by);
