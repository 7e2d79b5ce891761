#include "commands/OutputFile.h"

#include "base/LastWords.h"
#include "base/Terminal.h"
#include "commands/Command.h"
#include "forms/InputForm.h"
#include "sources/Sources.h"

#include <algorithm>
#include <filesystem>
#include <new>

#include <unistd.h>

void requireInputs(const std::vector<std::string>& inputs)
{
    std::for_each(inputs.begin(), inputs.end(), checkInput);
    const auto endless = std::find_if(inputs.begin(), inputs.end(), isEndless);
    if (endless != inputs.end() && endless + 1 != inputs.end()) {
        throw UsageError{*endless + " has no end, so that " + *(endless + 1) +
                         " would never be read; ?retries=0 ends it with its connection"};
    }
}

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
    if (name.empty() || output.open(name)) {
        return true;
    }
    if (output.wasInterrupted()) {
        throw Interrupted{};
    }
    tell(output.problem());
    return false;
}

bool anyIsLive(const std::vector<std::string>& inputs)
{
    return std::any_of(inputs.begin(), inputs.end(), isLiveInput);
}

bool isCutShort(ExitStatus status)
{
    return status == ExitStatus::unreadable || status == ExitStatus::interrupted ||
           status == ExitStatus::outOfMemory;
}

namespace {

ExitStatus statusOf(const std::function<ExitStatus()>& work)
{
    try {
        return work();
    } catch (const std::bad_alloc&) {
        return lastWords::tellException();
    }
}

}    // namespace

ExitStatus workInto(Output& output, const std::function<bool()>& isPartOfUse,
                    const std::function<ExitStatus()>& work)
{
    const ExitStatus status = statusOf(work);
    if (isCutShort(status) && !isPartOfUse() && output.discard()) {
        tell("nothing was written to " + output.fileName());
    } else if (!output.close() && !output.readerIsGone()) {
        tell(output.problem());
        return ExitStatus::unwritable;
    }
    return status;
}

ExitStatus print(const std::string& text, const std::string& outputName)
{
    Output output;
    if (!openOutput(output, outputName)) {
        return ExitStatus::unwritable;
    }
    return workInto(
        output, [] { return false; },
        [&] {
            output << text;
            return ExitStatus::success;
        });
}
