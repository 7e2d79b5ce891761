#include "commands/OutputFile.h"

#include "commands/Command.h"
#include "forms/PacketWriter.h"

#include <cstdio>
#include <filesystem>

#include <unistd.h>

void requireOtherOutput(const std::vector<std::string>& inputs, const std::string& outputName)
{
    for (const std::string& input : inputs) {
        std::error_code missing;    // then it is another file
        if (std::filesystem::is_regular_file(outputName, missing) &&
            std::filesystem::equivalent(input, outputName, missing)) {
            throw UsageError{"the output " + outputName + " is an input"};
        }
    }
}

bool goesToTerminal(const std::string& outputName)
{
    return outputName.empty() && ::isatty(STDOUT_FILENO) == 1;
}

void requireNoBinaryOnTerminal(const std::string& form, const std::string& outputName)
{
    if (goesToTerminal(outputName) && !isText(*inputFormOf(form))) {
        throw UsageError{"the form '" + form +
                         "' is binary and not for a terminal; name a file with --output, or "
                         "redirect the output"};
    }
}

bool openOutput(Output& output, const std::string& name)
{
    if (!name.empty() && !output.open(name)) {
        std::fprintf(stderr, "rtcm2: %s\n", output.problem().c_str());
        return false;
    }
    return true;
}

ExitStatus tellEnd(Output& output, ExitStatus status)
{
    if (!output.close() && !output.readerIsGone()) {
        std::fprintf(stderr, "rtcm2: %s\n", output.problem().c_str());
        return ExitStatus::unwritable;
    }
    if (status == ExitStatus::nothingFound) {
        std::fprintf(stderr, "rtcm2: no message found in the input\n");
    }
    return status;
}
