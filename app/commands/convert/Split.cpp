#include "commands/convert/Split.h"

#include "base/PlainText.h"
#include "base/Terminal.h"
#include "commands/Command.h"
#include "commands/CommonOptions.h"
#include "commands/OutputFile.h"
#include "commands/convert/SplitSink.h"

#include <filesystem>

namespace {

namespace fs = std::filesystem;

const std::map<std::string, SplitBy> ways = {{"station", SplitBy::station},
                                             {"type", SplitBy::type},
                                             {"hour", SplitBy::hour},
                                             {"mmsi", SplitBy::mmsi}};

// Also where the name of no file to come is known: the inputs must not lie among them.
void requireDirectory(const ReadingOptions& reading)
{
    const std::string& directory = reading.output;
    std::error_code missing;
    if (directory.empty() || (fs::exists(directory, missing) && !fs::is_directory(directory))) {
        throw UsageError{"--split needs a directory for its files: --output DIRECTORY" +
                         (directory.empty() ? "" : "; " + printable(directory) + " is none")};
    }
    for (const std::string& input : reading.inputs) {
        const fs::path parent =
            fs::path(input).has_parent_path() ? fs::path(input).parent_path() : ".";
        if (input != "-" && fs::equivalent(parent, directory, missing)) {
            throw UsageError{"the input " + printable(input) + " lies in the output directory, " +
                             printable(directory)};
        }
    }
}

}    // namespace

void declareSplit(CLI::App& command, std::string& by)
{
    command
        .add_option(
            "--split", by,
            "With a directory as the output: a file for each station (station-417.rtcm2), "
            "type (type-1.rtcm2), hour (2026-11-23T14.rtcm2, by the time of receipt or with "
            "--date; else hour-000.rtcm2 and so on) or AIS sender (mmsi-2734450.rtcm2)")
        ->check(CLI::IsMember({"station", "type", "hour", "mmsi"}))
        ->group(optionGroup::output);
}

ExitStatus runSplit(Host& host, const ReadingOptions& reading, const CopyOptions& copy,
                    const std::string& by)
{
    requireDirectory(reading);
    const SplitOptions options{.by = ways.at(by), .copy = copy, .date = reading.part.window().date};
    ReadingOptions toFiles = reading;
    toFiles.output.clear();
    OutputFiles files(reading.output);
    std::uint64_t written = 0;
    const auto makeSink = [&](Output&, const MessageFilter&) {
        return std::make_unique<SplitSink>(files, host.model, options, written);
    };
    const ExitStatus status = runSession(host, toFiles, makeSink);
    if (isCutShort(status) && (written == 0 || !reading.isLive())) {
        tell("nothing was written to " + reading.output);
        return status;
    }
    if (!files.close()) {
        tell(files.problem());
        return ExitStatus::unwritable;
    }
    if (!reading.session.quiet && written > 0) {
        tell(countText(written, "message") + " in " + countText(files.count(), "file") + " in " +
             reading.output);
    }
    return status;
}
