#include "commands/Commands.h"

#include "base/NearestName.h"
#include "commands/CommonOptions.h"
#include "commands/OutputFile.h"
#include "commands/describe/DescribeFacts.h"
#include "commands/describe/DescribeView.h"

#include <algorithm>
#include <string>
#include <vector>

namespace {

std::string unknownKind(const FormatModel& format, const std::string& name)
{
    std::vector<std::string> kindNames;
    for (const KindModel* kind : describe::allKinds(format)) {
        kindNames.push_back("'" + kind->name + "'");
    }
    const std::string meant = suggestion(nearestNames(name, kindNames));
    return "no kind of message is called '" + name + "'" +
           (meant.empty() ? " ('rtcm2 describe' lists them)" : ": " + meant);
}

// Needs no input: what it tells comes from the format's descriptors.
class DescribeCommand : public Command {
public:
    void declare(CLI::App& program) override;
    ExitStatus run(Host& host) override;

private:
    describe::Kinds chosenKinds(const FormatModel& format) const;
    std::string description(const FormatModel& format) const;

    std::vector<std::string> names;
    bool json = false;
    bool markdown = false;
    std::string outputPath;    // empty for standard output
};

}    // namespace

void DescribeCommand::declare(CLI::App& program)
{
    app = program.add_subcommand("describe", "The format itself: kinds of messages and fields");
    app->add_option("kind", names,
                    "Kinds to describe, by type number, name or identifier, or 'all'; without any, "
                    "the kinds are listed")
        ->type_name("KIND");
    auto* asJson = app->add_flag("--json", json, "For programs; all kinds unless some are named");
    app->add_flag("--markdown", markdown, "As Markdown")->excludes(asJson);
    declareOutput(*app, outputPath);
    app->footer("Examples:\n"
                "  rtcm2 describe                          all kinds, one a line\n"
                "  rtcm2 describe 18 'RTK 18'              the fields of two kinds\n"
                "  rtcm2 describe all --markdown -o f.md   everything, as a document\n"
                "  rtcm2 describe --json                   everything, for programs");
}

ExitStatus DescribeCommand::run(Host& host)
{
    return print(description(host.model), outputPath);
}

describe::Kinds DescribeCommand::chosenKinds(const FormatModel& format) const
{
    bool wantsAll = names.empty();
    describe::Kinds kinds;
    for (const std::string& name : names) {
        const KindModel* kind = format.kind(name);
        if (name == "all") {
            wantsAll = true;
        } else if (kind == nullptr) {
            throw UsageError{unknownKind(format, name)};
        } else if (std::find(kinds.begin(), kinds.end(), kind) == kinds.end()) {
            kinds.push_back(kind);
        }
    }
    return wantsAll ? describe::allKinds(format) : kinds;
}

std::string DescribeCommand::description(const FormatModel& format) const
{
    const describe::Kinds kinds = chosenKinds(format);
    if (json) {
        return describe::json(format, kinds);
    }
    if (names.empty()) {
        return markdown ? describe::markdownOverview(format) : describe::textOverview(format);
    }
    return markdown ? describe::markdown(format, kinds) : describe::text(format, kinds);
}

std::unique_ptr<Command> describeCommand()
{
    return std::make_unique<DescribeCommand>();
}
