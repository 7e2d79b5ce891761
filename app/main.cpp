#include "AbstractDecoder.h"
#include "DecoderDriver.h"
#include "Interrupt.h"
#include "ListView.h"
#include "Plugin.h"
#include "Session.h"
#include "ShowView.h"
#include "StreamReader.h"

#include <CLI/CLI.hpp>

#include <QLocale>

#include <cstdio>
#include <cstdlib>

namespace {

struct CommonOptions {
    std::vector<std::string> inputs;
    bool quiet = false;
};

void addCommonOptions(CLI::App& command, CommonOptions& options)
{
    command.add_option("input", options.inputs, "Files to read; - is standard input")->required();
    command.add_flag("-q,--quiet", options.quiet, "Do not tell what could not be decoded");
}

std::vector<const KindModel*> mainKinds(const FormatModel& model)
{
    std::vector<const KindModel*> kinds;
    for (const auto& kind : model.kinds()) {
        if (kind->isMain) {
            kinds.push_back(kind.get());
        }
    }
    return kinds;
}

ExitStatus tellEnd(Output& output, ExitStatus status)
{
    if (!output.close() && !output.readerIsGone()) {
        std::fprintf(stderr, "rtcm2: %s\n", output.problem().c_str());
        return ExitStatus::unwritable;
    }
    if (status == ExitStatus::nothingFound) {
        std::fprintf(stderr, "rtcm2: no message found\n");
    }
    return status;
}

}    // namespace

int main(int argc, char** argv)
{
    // Numbers look the same everywhere.
    QLocale::setDefault(QLocale::c());
    interrupt::install();

    CLI::App app{"Decodes RTCM 2.x differential GNSS messages."};
    app.require_subcommand(1);
    CommonOptions common;
    ListOptions listOptions;
    CLI::App* list = app.add_subcommand("list", "One line a message");
    addCommonOptions(*list, common);
    list->add_flag("-p,--position", listOptions.position, "Show message number and byte position");
    list->add_option("-s,--separator", listOptions.separator, "Text between two fields")
        ->capture_default_str();
    CLI::App* show = app.add_subcommand("show", "Every field with its meaning");
    addCommonOptions(*show, common);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : static_cast<int>(ExitStatus::usage);
    }

    const FormatModel model(plugin::format());
    const std::unique_ptr<AbstractDecoder> decoder = plugin::makeDecoder();
    DecoderDriver driver(*decoder, plugin::isSwitchedOff);
    Session session(model, driver, [] { return std::make_unique<StreamReader>(); });
    Output output;
    const TroubleReport report(common.quiet);
    std::unique_ptr<Sink> sink;
    if (list->parsed()) {
        sink = std::make_unique<ListView>(output, listOptions, report, mainKinds(model));
    } else {
        const bool colour = output.isTerminal() && std::getenv("NO_COLOR") == nullptr;
        sink = std::make_unique<ShowView>(output, colour, report);
    }
    const ExitStatus status = session.run(common.inputs, *sink);
    return static_cast<int>(tellEnd(output, status));
}
