#include "commands/list/ListCommand.h"

#include <algorithm>

namespace {

// A column that no kind can fill is a mistake.
void requireFields(const std::vector<std::string>& names,
                   const std::vector<const KindModel*>& kinds)
{
    for (const std::string& name : names) {
        const bool known = std::any_of(kinds.begin(), kinds.end(), [&](const KindModel* kind) {
            return kind->field(name) != nullptr;
        });
        if (!known) {
            throw UsageError{"no message that can be listed has a field '" + name +
                             "' ('rtcm2 describe KIND' lists fields)"};
        }
    }
}

}    // namespace

void ListCommand::declare(CLI::App& program)
{
    app = program.add_subcommand("list", "One line a message");
    reading.declare(*app);
    app->add_flag("-i,--interpreted", list.interpreted, "Show what coded values mean");
    app->add_option("--fields", list.fields, "Only these fields, by name")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->type_name("FIELD");
    app->add_option("-s,--separator", list.separator, "Text between two fields")
        ->capture_default_str();
    app->add_flag("-p,--position", list.position, "Show message number and byte position first");
    app->footer("Examples:\n"
                "  rtcm2 list capture.rtcm2\n"
                "  rtcm2 list -i --fields 'Modified Z-Count,Station Health' capture.rtcm2\n"
                "  nc caster 2101 | rtcm2 list --type 1,31 --position -");
}

ExitStatus ListCommand::run(Host& host)
{
    return runSession(host, reading, [this](Output& output, const MessageFilter& filter) {
        requireFields(list.fields, filter.kinds());
        return std::make_unique<ListView>(output, list, filter.kinds());
    });
}
